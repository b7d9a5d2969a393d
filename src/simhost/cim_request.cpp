#include "simhost/cim_request.h"

#include <pugixml.hpp>

#include "simhost/path_text.h"
#include "simhost/text.h"

namespace simhost {

namespace {

bool IsTrue(const pugi::xml_node& parameter) {
    return EqualIgnoringCase(Trimmed(parameter.child_value("VALUE")), "true");
}

std::string ClassName(const pugi::xml_node& parameter) {
    return parameter.child("CLASSNAME").attribute("NAME").value();
}

/// Keys that refer to objects whose keys refer to objects ... are followed so far.
constexpr int kMaxReferenceDepth = 8;

ObjectPath ReadInstanceName(const pugi::xml_node& node, int depth = 0) {
    ObjectPath path{node.attribute("CLASSNAME").value(), {}};
    for (const pugi::xml_node& binding : node.children("KEYBINDING")) {
        const pugi::xml_node value = binding.child("KEYVALUE");
        const pugi::xml_node reference = binding.child("VALUE.REFERENCE").child("INSTANCENAME");
        path.keys.push_back(
            {binding.attribute("NAME").value(), value.attribute("VALUETYPE").as_string("string"),
             reference && depth < kMaxReferenceDepth ? ReadInstanceName(reference, depth + 1).Text()
                                                     : value.child_value()});
    }
    SortKeys(path);
    return path;
}

std::vector<std::string> ReadPropertyList(const pugi::xml_node& parameter) {
    std::vector<std::string> names;
    for (const pugi::xml_node& value : parameter.child("VALUE.ARRAY").children("VALUE")) {
        names.emplace_back(value.child_value());
    }
    return names;
}

void ReadSource(const pugi::xml_node& parameter, CimRequest& request) {
    if (const pugi::xml_node name = parameter.child("INSTANCENAME")) {
        request.source = ReadInstanceName(name);
        request.class_name = request.source->class_name;
    } else {
        request.class_name = ClassName(parameter);
    }
}

/// What each parameter is read into; parameters of other operations are passed over.
struct Parameter {
    std::string_view name;
    void (*read)(const pugi::xml_node&, CimRequest&);
};

constexpr Parameter kParameters[] = {
    {"ClassName", [](const auto& node, auto& to) { to.class_name = ClassName(node); }},
    {"ObjectName", ReadSource},
    {"AssocClass", [](const auto& node, auto& to) { to.association_class = ClassName(node); }},
    {"ResultClass", [](const auto& node, auto& to) { to.result_class = ClassName(node); }},
    {"Role", [](const auto& node, auto& to) { to.role = node.child_value("VALUE"); }},
    {"ResultRole", [](const auto& node, auto& to) { to.result_role = node.child_value("VALUE"); }},
    {"DeepInheritance", [](const auto& node, auto& to) { to.deep_inheritance = IsTrue(node); }},
    {"IncludeQualifiers", [](const auto& node, auto& to) { to.include_qualifiers = IsTrue(node); }},
    {"IncludeClassOrigin",
     [](const auto& node, auto& to) { to.include_class_origin = IsTrue(node); }},
    {"PropertyList", [](const auto& node, auto& to) { to.property_list = ReadPropertyList(node); }},
};

void ReadParameter(const pugi::xml_node& node, CimRequest& request) {
    for (const Parameter& parameter : kParameters) {
        if (EqualIgnoringCase(node.attribute("NAME").value(), parameter.name)) {
            parameter.read(node, request);
        }
    }
}

void ReadCall(const pugi::xml_node& call, CimRequest& request) {
    request.operation = call.attribute("NAME").value();
    request.intrinsic = std::string_view(call.name()) == "IMETHODCALL";
    const auto path = call.select_node("descendant::LOCALNAMESPACEPATH").node();
    for (const pugi::xml_node& part : path.children("NAMESPACE")) {
        request.name_space += request.name_space.empty() ? "" : "/";
        request.name_space += part.attribute("NAME").value();
    }
    for (const pugi::xml_node& node : call.children("IPARAMVALUE")) {
        ReadParameter(node, request);
    }
}

std::string ReadMessage(const pugi::xml_node& message, CimRequest& request) {
    request.message_id = message.attribute("ID").value();
    if (!message || request.message_id.empty()) {
        return "request-not-valid";
    }
    if (!std::string_view(message.attribute("PROTOCOLVERSION").value()).starts_with("1.")) {
        return "unsupported-protocol-version";
    }
    if (message.child("MULTIREQ")) {
        return "multiple-requests-unsupported";
    }
    const pugi::xml_node call = message.child("SIMPLEREQ").first_child();
    const std::string_view kind = call.name();
    if ((kind != "IMETHODCALL" && kind != "METHODCALL") || !call.attribute("NAME")) {
        return "request-not-valid";
    }
    ReadCall(call, request);
    return request.name_space.empty() ? "request-not-valid" : "";
}

}  // namespace

CimRequestResult ReadCimRequest(std::string_view body) {
    CimRequestResult result;
    pugi::xml_document document;
    if (!document.load_buffer(body.data(), body.size(), pugi::parse_default, pugi::encoding_utf8)) {
        result.error = "request-not-well-formed";
        return result;
    }
    result.error = ReadMessage(document.child("CIM").child("MESSAGE"), result.request);
    return result;
}

}  // namespace simhost
