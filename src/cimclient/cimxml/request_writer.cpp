#include "cimxml/request_writer.h"

#include <string_view>

#include "common/text/xml_escape.h"

namespace cimclient {

namespace {

using Pegasus::CIMKeyBinding;
using Pegasus::CIMName;
using Pegasus::CIMObjectPath;

class Body {
public:
    Body(const char* operation, const Pegasus::CIMNamespaceName& name_space, unsigned message_id) {
        Line("<?xml version=\"1.0\" encoding=\"utf-8\" ?>");
        Line("<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\">");
        Line("<MESSAGE ID=\"" + std::to_string(message_id) + "\" PROTOCOLVERSION=\"1.0\">");
        Line("<SIMPLEREQ>");
        Line(std::string("<IMETHODCALL NAME=\"") + operation + "\">");
        NamespacePath(name_space.getString().utf8());
    }

    std::string Finished() && {
        Line("</IMETHODCALL>");
        Line("</SIMPLEREQ>");
        Line("</MESSAGE>");
        Line("</CIM>");
        return std::move(text_);
    }

    void ClassParameter(const char* name, const CIMName& class_name) {
        OpenParameter(name);
        if (!class_name.isNull()) {
            Element("<CLASSNAME NAME=\"", class_name.getString().utf8(), "\"/>");
        }
        CloseParameter();
    }

    void BooleanParameter(const char* name, bool value, bool default_value) {
        if (value != default_value) {
            OpenParameter(name);
            Line(value ? "<VALUE>TRUE</VALUE>" : "<VALUE>FALSE</VALUE>");
            CloseParameter();
        }
    }

    void TextParameter(const char* name, std::string_view value) {
        if (!value.empty()) {
            OpenParameter(name);
            Element("<VALUE>", value, "</VALUE>");
            CloseParameter();
        }
    }

    /// Host and namespace of the path are not sent: the request's own namespace counts.
    void PathParameter(const char* name, const CIMObjectPath& path) {
        OpenParameter(name);
        InstanceName(path);
        CloseParameter();
    }

private:
    void Line(std::string_view line) { text_.append(line).append("\n"); }
    void Element(std::string_view before, std::string_view text, std::string_view after) {
        text_ += before;
        Zentar::AppendXmlEscaped(text_, text);
        Line(after);
    }
    void OpenParameter(const char* name) { Element("<IPARAMVALUE NAME=\"", name, "\">"); }
    void CloseParameter() { Line("</IPARAMVALUE>"); }

    void NamespacePath(std::string_view name_space) {
        Line("<LOCALNAMESPACEPATH>");
        while (!name_space.empty()) {
            const std::size_t slash = name_space.find('/');
            Element("<NAMESPACE NAME=\"", name_space.substr(0, slash), "\"/>");
            name_space.remove_prefix(slash == std::string_view::npos ? name_space.size()
                                                                     : slash + 1);
        }
        Line("</LOCALNAMESPACEPATH>");
    }

    void InstanceName(const CIMObjectPath& path) {
        Element("<INSTANCENAME CLASSNAME=\"", path.getClassName().getString().utf8(), "\">");
        for (Pegasus::Uint32 i = 0; i < path.getKeyBindings().size(); ++i) {
            const CIMKeyBinding& key = path.getKeyBindings()[i];
            Element("<KEYBINDING NAME=\"", key.getName().getString().utf8(), "\">");
            KeyValue(key);
            Line("</KEYBINDING>");
        }
        Line("</INSTANCENAME>");
    }

    void KeyValue(const CIMKeyBinding& key) {
        if (key.getType() == CIMKeyBinding::REFERENCE) {
            Line("<VALUE.REFERENCE>");
            InstanceName(CIMObjectPath(key.getValue()));
            Line("</VALUE.REFERENCE>");
            return;
        }
        const char* type = key.getType() == CIMKeyBinding::BOOLEAN   ? "boolean"
                           : key.getType() == CIMKeyBinding::NUMERIC ? "numeric"
                                                                     : "string";
        Element(std::string("<KEYVALUE VALUETYPE=\"") + type + "\">", key.getValue().utf8(),
                "</KEYVALUE>");
    }

    std::string text_;
};

}  // namespace

std::string WriteRequest(const EnumerateInstancesRequest& request, unsigned message_id) {
    Body body("EnumerateInstances", request.name_space, message_id);
    body.ClassParameter("ClassName", request.class_name);
    body.BooleanParameter("LocalOnly", request.local_only, true);
    body.BooleanParameter("DeepInheritance", request.deep_inheritance, true);
    body.BooleanParameter("IncludeQualifiers", request.include_qualifiers, false);
    body.BooleanParameter("IncludeClassOrigin", request.include_class_origin, false);
    return std::move(body).Finished();
}

std::string WriteRequest(const AssociatorsRequest& request, unsigned message_id) {
    Body body("Associators", request.name_space, message_id);
    body.PathParameter("ObjectName", request.object_name);
    body.ClassParameter("AssocClass", request.assoc_class);
    body.ClassParameter("ResultClass", request.result_class);
    body.TextParameter("Role", request.role.utf8());
    body.TextParameter("ResultRole", request.result_role.utf8());
    body.BooleanParameter("IncludeQualifiers", request.include_qualifiers, false);
    body.BooleanParameter("IncludeClassOrigin", request.include_class_origin, false);
    return std::move(body).Finished();
}

}  // namespace cimclient
