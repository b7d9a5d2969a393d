#include "simhost/cim_calls.h"

namespace simhost_test {

namespace {

std::string Replaced(std::string text, char from, const std::string& to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
        text.replace(at, 1, to);
    }
    return text;
}

std::string NamespaceElements(const std::string& name_space) {
    return "<NAMESPACE NAME=\"" + Replaced(name_space, '/', "\"/><NAMESPACE NAME=\"") + "\"/>";
}

}  // namespace

std::string Post(const std::string& headers, const std::string& body) {
    return "POST /cimom HTTP/1.1\r\nHOST: localhost\r\ncontent-length: " +
           std::to_string(body.size()) + "\r\n" + headers + "\r\n" + body;
}

std::string Call(const std::string& operation, const std::string& name_space,
                 const std::string& parameters, const std::string& headers) {
    return Post(headers + "CIMOperation: MethodCall\r\nCIMMethod: " + operation +
                    "\r\nCIMObject: " + Replaced(name_space, '/', "%2F") + "\r\n",
                "<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n"
                "<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\">\n"
                "<MESSAGE ID=\"1000\" PROTOCOLVERSION=\"1.0\">\n<SIMPLEREQ>\n"
                "<IMETHODCALL NAME=\"" +
                    operation + "\">\n<LOCALNAMESPACEPATH>\n" + NamespaceElements(name_space) +
                    "\n</LOCALNAMESPACEPATH>\n" + parameters +
                    "</IMETHODCALL>\n</SIMPLEREQ>\n</MESSAGE>\n</CIM>\n");
}

std::string ClassParameter(const std::string& name, const std::string& class_name) {
    return "<IPARAMVALUE NAME=\"" + name + "\">\n<CLASSNAME NAME=\"" + class_name +
           "\"/>\n</IPARAMVALUE>\n";
}

std::string Parameter(const std::string& name, const std::string& value) {
    return "<IPARAMVALUE NAME=\"" + name + "\">\n<VALUE>" + value + "</VALUE>\n</IPARAMVALUE>\n";
}

std::string Enumerate(const std::string& name_space, const std::string& class_name,
                      const CallOptions& options) {
    return Call("EnumerateInstances", name_space,
                ClassParameter("ClassName", class_name) + options.parameters, options.headers);
}

std::string Key(const std::string& name, const std::string& value) {
    return "<KEYBINDING NAME=\"" + name + "\">\n<KEYVALUE VALUETYPE=\"string\">" + value +
           "</KEYVALUE>\n</KEYBINDING>\n";
}

std::string Associators(const std::string& name_space, const std::string& class_name,
                        const std::string& keys, const CallOptions& options) {
    return Call("Associators", name_space,
                "<IPARAMVALUE NAME=\"ObjectName\">\n<INSTANCENAME CLASSNAME=\"" + class_name +
                    "\">\n" + keys + "</INSTANCENAME>\n</IPARAMVALUE>\n" + options.parameters,
                options.headers);
}

}  // namespace simhost_test
