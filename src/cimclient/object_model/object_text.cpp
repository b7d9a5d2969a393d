#include "object_model/object_text.h"

#include <algorithm>

#include "object_model/value_body.h"
#include "reply_limits.h"

namespace Pegasus::kalvex::detail {

namespace {

/// What an object holds comes from a host, and grows with every level of embedding.
void AppendBoundedText(std::string& out, std::string_view text) {
    AppendXmlEscaped(out, text, cimclient::kMaxObjectTextBytes);
}

void AppendValueElement(std::string& out, std::string_view text) {
    out += "<VALUE>";
    AppendBoundedText(out, text);
    out += "</VALUE>\n";
}

void AppendReference(std::string& out, const CIMObjectPath& path) {
    out += "<VALUE.REFERENCE>\n";
    AppendBoundedText(out, path.toString().utf8());
    out += "\n</VALUE.REFERENCE>\n";
}

struct AppendScalarElement {
    std::string& out;

    void operator()(const CIMObjectPath& path) const { AppendReference(out, path); }
    template <class T>
    void operator()(const T& x) const {
        AppendValueElement(out, CIMValue(x).toString().utf8());
    }
};

struct AppendArrayElement {
    std::string& out;
    const std::vector<bool>* lost;

    template <class T>
    void operator()(const Array<T>& elements) const {
        out += "<VALUE.ARRAY>\n";
        for (Uint32 i = 0; i < elements.size(); ++i) {
            if (lost != nullptr && (*lost)[i]) {
                out += "<VALUE.NULL/>\n";
            } else {
                AppendScalarElement{out}(elements[i]);
            }
        }
        out += "</VALUE.ARRAY>\n";
    }
};

void AppendContent(std::string& out, const CIMValue& value) {
    if (value.isNull()) {
        return;
    }
    if (value.isArray()) {
        std::visit(AppendArrayElement{out, ValueAccess::LostOf(value)},
                   ValueAccess::ElementsOf(value));
    } else {
        ValueAccess::VisitScalar(value, AppendScalarElement{out});
    }
}

const char* PropertyElement(const CIMConstProperty& property) {
    if (property.isArray()) {
        return "PROPERTY.ARRAY";
    }
    return property.getType() == CIMTYPE_REFERENCE ? "PROPERTY.REFERENCE" : "PROPERTY";
}

/// The TYPE attribute of embedded objects is that of the text that carries them.
std::string TypeAttributes(CIMType type) {
    switch (type) {
        case CIMTYPE_REFERENCE:
            return "";
        case CIMTYPE_OBJECT:
            return " EmbeddedObject=\"object\" TYPE=\"string\"";
        case CIMTYPE_INSTANCE:
            return " EmbeddedObject=\"instance\" TYPE=\"string\"";
        default:
            return std::string(" TYPE=\"") + cimTypeToString(type) + "\"";
    }
}

void AppendQualifier(std::string& out, const CIMConstQualifier& qualifier) {
    out.append("<QUALIFIER NAME=\"").append(qualifier.getName().getString().utf8());
    out.append("\" TYPE=\"").append(cimTypeToString(qualifier.getType())).append("\">\n");
    AppendContent(out, qualifier.getValue());
    out += "</QUALIFIER>\n";
}

void AppendProperty(std::string& out, const CIMConstProperty& property) {
    const char* element = PropertyElement(property);
    out.append("<").append(element).append(" NAME=\"");
    out.append(property.getName().getString().utf8()).append("\" ");
    out.append(TypeAttributes(property.getType())).append(">\n");
    for (Uint32 i = 0; i < property.getQualifierCount(); ++i) {
        AppendQualifier(out, property.getQualifier(i));
    }
    AppendContent(out, property.getValue());
    out.append("</").append(element).append(">\n");
}

bool StandsForItself(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x20 && byte != 0x7F && c != '<' && c != '>' && c != '&' && c != '"' &&
           c != '\'';
}

void AppendCharacterReference(std::string& out, char c) {
    switch (c) {
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '&':
            out += "&amp;";
            break;
        case '"':
            out += "&quot;";
            break;
        case '\'':
            out += "&apos;";
            break;
        default:
            out += "&#" + std::to_string(static_cast<int>(c)) + ";";
            break;
    }
}

}  // namespace

void AppendObjectText(std::string& out, const CIMConstObject& object) {
    const std::string_view class_name = object.getClassName().getString().utf8();
    if (object.isClass()) {
        out.append("<CLASS NAME=\"").append(class_name).append("\" >\n</CLASS>\n");
        return;
    }
    out.append("<INSTANCE CLASSNAME=\"").append(class_name).append("\" >\n");
    for (Uint32 i = 0; i < object.getQualifierCount(); ++i) {
        AppendQualifier(out, object.getQualifier(i));
    }
    for (Uint32 i = 0; i < object.getPropertyCount(); ++i) {
        AppendProperty(out, object.getProperty(i));
    }
    out += "</INSTANCE>\n";
}

void AppendXmlEscaped(std::string& out, std::string_view text, std::size_t most_bytes) {
    while (!text.empty()) {
        if (out.size() > most_bytes) {
            throw Exception("The text of an object is too long.");
        }
        const auto* const special = std::find_if_not(text.begin(), text.end(), StandsForItself);
        const auto plain = static_cast<std::size_t>(special - text.begin());
        out.append(text.substr(0, plain));
        text.remove_prefix(plain);
        if (!text.empty()) {
            AppendCharacterReference(out, text.front());
            text.remove_prefix(1);
        }
    }
}

}  // namespace Pegasus::kalvex::detail
