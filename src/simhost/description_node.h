// One value of a JSON description, and where it stands.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace simhost {

using Json = nlohmann::ordered_json;

/// A view: the JSON value, the node that this one was taken from, and the source's name must
/// outlive it.
class DescriptionNode {
public:
    DescriptionNode(const Json& json, const std::string& source_name);

    const Json& json() const { return *json_; }
    /// The member's name, for a member of an object.
    const std::string& name() const { return *name_; }

    /// Throws DescriptionError: what is wrong here, and what to write instead.
    [[noreturn]] void Fail(const std::string& what, const std::string& remedy) const;

    /// An object's members, an array's elements. They fail, with the remedy, on anything else.
    std::vector<DescriptionNode> Members(const std::string& remedy) const;
    std::vector<DescriptionNode> Elements(const std::string& remedy) const;
    /// A text; fails on anything else.
    const std::string& Text(const std::string& remedy) const;

    /// A member of an object, if it is there.
    std::optional<DescriptionNode> Member(std::string_view member_name) const;
    DescriptionNode Required(std::string_view member_name, const std::string& remedy) const;
    /// Fails when this is no object, or when it has a member of another name.
    void AllowOnly(std::initializer_list<std::string_view> member_names) const;

private:
    DescriptionNode(const Json& json, const DescriptionNode& parent, const std::string* name,
                    std::size_t index);
    std::string Pointer() const;

    const Json* json_;
    const DescriptionNode* parent_ = nullptr;
    const std::string* source_name_;
    const std::string* name_ = nullptr;
    std::size_t index_ = 0;
};

/// A name as it appears in messages.
std::string Quote(std::string_view name);

}  // namespace simhost
