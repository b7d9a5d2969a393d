#include "support/host_builder.h"

namespace support {

namespace {

std::string Quoted(const std::string& text) {
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            quoted += '\\';
        }
        quoted += c;
    }
    return quoted + '"';
}

/// The first name of a JSON object, quotes included.
std::string FirstName(const std::string& object) {
    const std::size_t begin = object.find('"');
    return object.substr(begin, object.find('"', begin + 1) - begin + 1);
}

std::string Joined(const std::vector<std::string>& parts) {
    std::string joined;
    for (const std::string& part : parts) {
        joined += (joined.empty() ? "" : ",") + part;
    }
    return joined;
}

}  // namespace

HostBuilder::HostBuilder() {
    for (const char* ns : {"root/cimv2", kHardwareNamespace, "root/ibmsd"}) {
        namespaces_[ns];
    }
}

HostBuilder& HostBuilder::Class(const std::string& ns, const std::string& name,
                                const std::string& properties, const std::string& instances) {
    namespaces_[ns].classes.push_back(Quoted(name) + ":{\"keys\":[" + FirstName(properties) +
                                      "],\"properties\":" + properties +
                                      ",\"instances\":" + instances + "}");
    return *this;
}

HostBuilder& HostBuilder::Association(const std::string& ns, const std::string& association,
                                      const std::string& from, const std::string& to) {
    namespaces_[ns].associations.push_back("{\"class\":" + Quoted(association) + ",\"from\":" +
                                           Quoted(from) + ",\"to\":" + Quoted(to) + "}");
    return *this;
}

HostBuilder& HostBuilder::WithoutNamespace(const std::string& ns) {
    namespaces_.erase(ns);
    return *this;
}

simhost::HostDescription HostBuilder::Build() const {
    std::vector<std::string> namespaces;
    for (const auto& [name, content] : namespaces_) {
        namespaces.push_back(Quoted(name) + ":{\"classes\":{" + Joined(content.classes) +
                             "},\"associations\":[" + Joined(content.associations) + "]}");
    }
    return simhost::HostDescription::FromJson(
        "{\"name\":\"esx01\",\"namespaces\":{" + Joined(namespaces) + "}}", "test host");
}

}  // namespace support
