#include "simhost/description_node.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "simhost/host_description.h"

namespace simhost {

namespace {

/// A name as one step of a JSON pointer.
std::string PointerStep(const std::string& name) {
    std::string step = "/";
    for (const char c : name) {
        if (c == '~') {
            step += "~0";
        } else if (c == '/') {
            step += "~1";
        } else {
            step += c;
        }
    }
    return step;
}

}  // namespace

std::string Quote(std::string_view name) {
    return Json(name).dump(-1, ' ', false, Json::error_handler_t::replace);
}

DescriptionNode::DescriptionNode(const Json& json, const std::string& source_name)
    : json_(&json), source_name_(&source_name) {}

DescriptionNode::DescriptionNode(const Json& json, const DescriptionNode& parent,
                                 const std::string* name, std::size_t index)
    : json_(&json),
      parent_(&parent),
      source_name_(parent.source_name_),
      name_(name),
      index_(index) {}

std::string DescriptionNode::Pointer() const {
    if (parent_ == nullptr) {
        return "";
    }
    return parent_->Pointer() +
           (name_ != nullptr ? PointerStep(*name_) : "/" + std::to_string(index_));
}

void DescriptionNode::Fail(const std::string& what, const std::string& remedy) const {
    // As in a JSON string, so that names with line breaks stay on the message's one line.
    const std::string pointer = Quote(Pointer());
    const std::string where =
        parent_ == nullptr ? "the top level" : pointer.substr(1, pointer.size() - 2);
    throw DescriptionError(*source_name_ + ": " + what + " at " + where + ": " + remedy);
}

std::vector<DescriptionNode> DescriptionNode::Members(const std::string& remedy) const {
    if (!json_->is_object()) {
        Fail(std::string("an object is expected, not ") + json_->type_name(), remedy);
    }
    std::vector<DescriptionNode> members;
    members.reserve(json_->size());
    for (const auto& [name, value] : json_->get_ref<const Json::object_t&>()) {
        members.push_back(DescriptionNode(value, *this, &name, 0));
    }
    return members;
}

std::vector<DescriptionNode> DescriptionNode::Elements(const std::string& remedy) const {
    if (!json_->is_array()) {
        Fail(std::string("an array is expected, not ") + json_->type_name(), remedy);
    }
    std::vector<DescriptionNode> elements;
    elements.reserve(json_->size());
    for (const Json& value : *json_) {
        elements.push_back(DescriptionNode(value, *this, nullptr, elements.size()));
    }
    return elements;
}

const std::string& DescriptionNode::Text(const std::string& remedy) const {
    if (!json_->is_string()) {
        Fail(std::string("a string is expected, not ") + json_->type_name(), remedy);
    }
    return json_->get_ref<const std::string&>();
}

std::optional<DescriptionNode> DescriptionNode::Member(std::string_view member_name) const {
    for (const auto& [name, value] : json_->get_ref<const Json::object_t&>()) {
        if (name == member_name) {
            return DescriptionNode(value, *this, &name, 0);
        }
    }
    return std::nullopt;
}

DescriptionNode DescriptionNode::Required(std::string_view member_name,
                                          const std::string& remedy) const {
    if (const auto member = Member(member_name)) {
        return *member;
    }
    Fail(Quote(member_name) + " is missing", remedy);
}

void DescriptionNode::AllowOnly(std::initializer_list<std::string_view> member_names) const {
    std::string known;
    for (const std::string_view name : member_names) {
        known += (known.empty() ? "" : ", ") + Quote(name);
    }
    for (const DescriptionNode& member : Members("write one with " + known)) {
        if (std::find(member_names.begin(), member_names.end(), member.name()) ==
            member_names.end()) {
            member.Fail("unknown member " + Quote(member.name()), "write one of " + known);
        }
    }
}

}  // namespace simhost
