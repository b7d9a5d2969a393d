// What a simulated host contains: namespaces, classes, instances, associations.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace simhost {

struct Host;

/// A description that cannot be used. The text is one line: "SOURCE: WHAT at WHERE: REMEDY".
class DescriptionError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A host, read and checked. Immutable; copies share it, and any thread may use them.
/// README.md beside this file says how a description is written.
class HostDescription {
public:
    /// A two-socket server with every class that the inventory reads.
    static HostDescription Builtin();
    /// Throws DescriptionError when the file cannot be read or is no description.
    static HostDescription FromFile(const std::string& path);
    /// `source_name` stands for the file name in messages.
    static HostDescription FromJson(std::string_view text, const std::string& source_name);

    const Host& host() const { return *host_; }

private:
    explicit HostDescription(std::shared_ptr<const Host> host) : host_(std::move(host)) {}

    std::shared_ptr<const Host> host_;
};

/// The built-in host's description as JSON text, a model for one's own.
std::string_view BuiltinHostText();

}  // namespace simhost
