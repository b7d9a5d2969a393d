#include "object_model/object_text.h"

#include <algorithm>
#include <utility>

#include "object_model/value_texts.h"
#include "reply_limits.h"

namespace Pegasus::kalvex::detail {

namespace {

void AppendElement(std::string& out, CIMType type, std::string_view text) {
    const bool is_reference = type == CIMTYPE_REFERENCE;
    out += is_reference ? "<VALUE.REFERENCE>\n" : "<VALUE>";
    // What an object holds comes from a host, and grows with every level of embedding.
    AppendXmlEscaped(out, text, cimclient::kMaxObjectTextBytes);
    out += is_reference ? "\n</VALUE.REFERENCE>\n" : "</VALUE>\n";
}

/// Of the body's elements, or of its object.
void AppendElements(std::string& out, CIMType type, const ValueBody& body) {
    for (Uint32 i = 0; i < body.Size(); ++i) {
        if (body.IsReadable(i)) {
            std::string text;
            AppendElementText(text, body, i);
            AppendElement(out, type, text);
        } else {
            out += "<VALUE.NULL/>\n";
        }
    }
}

void AppendContent(std::string& out, const CIMValue& value) {
    if (value.isNull()) {
        return;
    }
    if (value.isArray()) {
        out += "<VALUE.ARRAY>\n";
        AppendElements(out, value.getType(), ValueAccess::BodyOf(value));
        out += "</VALUE.ARRAY>\n";
    } else if (IsEmbedded(value.getType())) {
        AppendElements(out, value.getType(), ValueAccess::BodyOf(value));
    } else {
        AppendElement(out, value.getType(), ValueAccess::TextOf(value).utf8());
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
            return std::string(" TYPE=\"").append(NameOf(type)) + "\"";
    }
}

void AppendQualifier(std::string& out, const CIMConstQualifier& qualifier) {
    out.append("<QUALIFIER NAME=\"").append(qualifier.getName().getString().utf8());
    out.append("\" TYPE=\"").append(NameOf(qualifier.getValue().getType())).append("\">\n");
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

constexpr std::pair<char, std::string_view> kEntities[] = {
    {'<', "&lt;"}, {'>', "&gt;"}, {'&', "&amp;"}, {'"', "&quot;"}, {'\'', "&apos;"}};

void AppendReference(std::string& out, char c) {
    for (const auto& [character, reference] : kEntities) {
        if (c == character) {
            out += reference;
            return;
        }
    }
    out += "&#" + std::to_string(static_cast<int>(c)) + ";";
}

void AppendObject(std::string& out, const ObjectBody& object) {
    const std::string_view class_name = object.path.getClassName().getString().utf8();
    if (object.is_class) {
        out.append("<CLASS NAME=\"").append(class_name).append("\" >\n</CLASS>\n");
        return;
    }
    out.append("<INSTANCE CLASSNAME=\"").append(class_name).append("\" >\n");
    for (Uint32 i = 0; i < object.qualifiers.size(); ++i) {
        AppendQualifier(out, object.qualifiers[i]);
    }
    for (Uint32 i = 0; i < object.properties.size(); ++i) {
        AppendProperty(out, object.properties[i]);
    }
    out += "</INSTANCE>\n";
}

}  // namespace

void AppendElementText(std::string& out, const ValueBody& body, Uint32 index) {
    if (body.texts.size() > 0) {
        out += body.texts[index].utf8();
    } else if (body.IsReadable(index)) {
        AppendObject(out, BodyOf(body.objects[index]));
    }
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
            AppendReference(out, text.front());
            text.remove_prefix(1);
        }
    }
}

}  // namespace Pegasus::kalvex::detail
