#include "simhost/host_description.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

#include "simhost/description_node.h"
#include "simhost/model.h"
#include "simhost/namespace_reader.h"
#include "simhost/text.h"

namespace simhost {

namespace {

constexpr const char* kHostRemedy =
    "write {\"name\": \"esx01\", \"namespaces\": {\"root/cimv2\": {...}}}";

Json Parse(std::string_view text, const std::string& source_name) {
    try {
        return Json::parse(text);
    } catch (const Json::exception& error) {  // malformed, or a number that no double can hold
        const std::string what = error.what();
        const auto end_of_code = what.find("] ");
        throw DescriptionError(
            source_name + ": not valid JSON: " +
            (end_of_code == std::string::npos ? what : what.substr(end_of_code + 2)) +
            ": correct the text there");
    }
}

void CheckNamespaceName(const DescriptionNode& node) {
    std::string_view rest = node.name();
    for (;;) {
        const auto slash = rest.find('/');
        if (!IsCimName(rest.substr(0, slash))) {
            node.Fail(Quote(node.name()) + " is no namespace", "write names with / between them");
        }
        if (slash == std::string_view::npos) {
            return;
        }
        rest.remove_prefix(slash + 1);
    }
}

void ReadHost(const DescriptionNode& root, Host& host) {
    root.AllowOnly({"name", "namespaces"});
    const auto name = root.Member("name");
    host.name = name ? name->Text("write the host's name") : "localhost";
    const auto namespaces = root.Required("namespaces", kHostRemedy);
    for (const DescriptionNode& node : namespaces.Members(kHostRemedy)) {
        CheckNamespaceName(node);
        if (host.FindNamespace(node.name()) != nullptr) {
            node.Fail("namespace " + Quote(node.name()) + " is described twice", "merge the two");
        }
        Namespace& added = host.namespaces.emplace_back();
        added.name = node.name();
        ReadNamespace(node, added);
    }
}

}  // namespace

HostDescription HostDescription::FromJson(std::string_view text, const std::string& source_name) {
    const Json json = Parse(text, source_name);
    auto host = std::make_shared<Host>();
    ReadHost(DescriptionNode(json, source_name), *host);
    return HostDescription(std::move(host));
}

HostDescription HostDescription::FromFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    file.peek();
    if (!file.is_open() || file.bad()) {
        throw DescriptionError(path + ": cannot be read: " + std::strerror(errno) +
                               ": name a file with a host description");
    }
    const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    return FromJson(text, path);
}

HostDescription HostDescription::Builtin() {
    return FromJson(BuiltinHostText(), "the built-in host");
}

}  // namespace simhost
