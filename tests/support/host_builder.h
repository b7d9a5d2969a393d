// Small hosts for tests, in one expression.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "simhost/host_description.h"

namespace support {

inline constexpr const char* kHardwareNamespace = "ibm/imm0/cimv2";

/// A host with the namespaces that the module reads, all empty at first.
class HostBuilder {
public:
    HostBuilder();

    /// Adds a class. Both texts are JSON in the form of a host description: an object of property
    /// name to type, of which the first is the key, and an array of instances.
    HostBuilder& Class(const std::string& ns, const std::string& name,
                       const std::string& properties, const std::string& instances = "[]");
    /// Associates two objects, given as paths; the classes must exist.
    HostBuilder& Association(const std::string& ns, const std::string& association,
                             const std::string& from, const std::string& to);
    HostBuilder& WithoutNamespace(const std::string& ns);

    simhost::HostDescription Build() const;

private:
    struct Namespace {
        std::vector<std::string> classes;
        std::vector<std::string> associations;
    };
    std::map<std::string, Namespace> namespaces_;
};

}  // namespace support
