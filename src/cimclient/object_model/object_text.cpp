#include "object_model/object_text.h"

#include <string>

#include "common/text/xml_escape.h"
#include "object_model/text_sink.h"
#include "object_model/value_body.h"
#include "object_model/value_texts.h"

namespace Pegasus::kalvex::detail {

namespace {

/// Escapes a text any number of times in one pass: of a reference, each further time replaces the
/// ampersand alone.
class Escaper {
public:
    explicit Escaper(TextSink& out) : out_(out) {}

    void Append(std::string_view text, std::size_t times) {
        if (times == 0) {
            out_.Append(text);
            return;
        }
        const std::string_view ampersand = Ampersand(times);
        while (!text.empty()) {
            const std::size_t plain = Zentar::PlainXmlLength(text);
            out_.Append(text.substr(0, plain));
            text.remove_prefix(plain);
            if (!text.empty()) {
                out_.Append(ampersand);
                out_.Append(Zentar::XmlReference(text.front()));
                text.remove_prefix(1);
            }
        }
    }

private:
    /// One that has been escaped once less.
    std::string_view Ampersand(std::size_t times) {
        constexpr std::string_view kRest = "amp;";
        const std::size_t size = 1 + (times - 1) * kRest.size();
        while (ampersand_.size() < size) {
            ampersand_ += kRest;
        }
        return std::string_view(ampersand_).substr(0, size);
    }

    TextSink& out_;
    std::string ampersand_ = "&";
};

const char* PropertyElement(const CIMConstProperty& property) {
    if (property.isArray()) {
        return "PROPERTY.ARRAY";
    }
    return property.getType() == CIMTYPE_REFERENCE ? "PROPERTY.REFERENCE" : "PROPERTY";
}

class ObjectWriter {
public:
    explicit ObjectWriter(TextSink& out) : escaper_(out) {}

    void Content(const CIMValue& value) {
        const ValueBody& body = ValueAccess::BodyOf(value);
        for (Uint32 i = 0; i < body.Size(); ++i) {
            Element(body, i);
            Markup(value.isArray() ? " " : "");
        }
    }

private:
    /// Belongs to the object at hand, and is escaped with it.
    template <class... Texts>
    void Markup(const Texts&... texts) {
        (escaper_.Append(texts, level_), ...);
    }

    void Element(const ValueBody& body, Uint32 index) {
        if (body.texts.size() > 0) {
            Markup(body.texts[index].utf8());
        } else if (body.IsReadable(index)) {
            Object(BodyOf(body.objects[index]));
        }
    }

    void Object(const ObjectBody& object) {
        const std::string_view class_name = object.path.getClassName().getString().utf8();
        if (object.is_class) {
            Markup("<CLASS NAME=\"", class_name, "\" >\n</CLASS>\n");
            return;
        }
        Markup("<INSTANCE CLASSNAME=\"", class_name, "\" >\n");
        for (Uint32 i = 0; i < object.qualifiers.size(); ++i) {
            Qualifier(object.qualifiers[i]);
        }
        for (Uint32 i = 0; i < object.properties.size(); ++i) {
            Property(object.properties[i]);
        }
        Markup("</INSTANCE>\n");
    }

    void Qualifier(const CIMConstQualifier& qualifier) {
        Markup("<QUALIFIER NAME=\"", qualifier.getName().getString().utf8(), "\" TYPE=\"",
               NameOf(qualifier.getValue().getType()), "\">\n");
        Value(qualifier.getValue());
        Markup("</QUALIFIER>\n");
    }

    void Property(const CIMConstProperty& property) {
        const char* element = PropertyElement(property);
        Markup("<", element, " NAME=\"", property.getName().getString().utf8(), "\" ");
        TypeAttributes(property.getType());
        Markup(">\n");
        for (Uint32 i = 0; i < property.getQualifierCount(); ++i) {
            Qualifier(property.getQualifier(i));
        }
        Value(property.getValue());
        Markup("</", element, ">\n");
    }

    /// The TYPE attribute of embedded objects is that of the text that carries them.
    void TypeAttributes(CIMType type) {
        if (type == CIMTYPE_REFERENCE) {
            return;
        }
        if (type == CIMTYPE_OBJECT) {
            Markup(" EmbeddedObject=\"object\"");
        } else if (type == CIMTYPE_INSTANCE) {
            Markup(" EmbeddedObject=\"instance\"");
        }
        Markup(" TYPE=\"", NameOf(IsEmbedded(type) ? CIMTYPE_STRING : type), "\"");
    }

    void Value(const CIMValue& value) {
        if (value.isNull()) {
            return;
        }
        const CIMType type = value.getType();
        if (value.isArray()) {
            Markup("<VALUE.ARRAY>\n");
            ValueElements(type, ValueAccess::BodyOf(value));
            Markup("</VALUE.ARRAY>\n");
        } else if (IsEmbedded(type)) {
            ValueElements(type, ValueAccess::BodyOf(value));
        } else {
            ValueElement(type, [&] { Markup(ValueAccess::TextOf(value).utf8()); });
        }
    }

    /// Of the body's elements, or of its object.
    void ValueElements(CIMType type, const ValueBody& body) {
        for (Uint32 i = 0; i < body.Size(); ++i) {
            if (body.IsReadable(i)) {
                ValueElement(type, [&] { Element(body, i); });
            } else {
                Markup("<VALUE.NULL/>\n");
            }
        }
    }

    /// What `append_text` appends is one level further in.
    template <class AppendText>
    void ValueElement(CIMType type, AppendText append_text) {
        const bool is_reference = type == CIMTYPE_REFERENCE;
        Markup(is_reference ? "<VALUE.REFERENCE>\n" : "<VALUE>");
        ++level_;
        append_text();
        --level_;
        Markup(is_reference ? "\n</VALUE.REFERENCE>\n" : "</VALUE>\n");
    }

    Escaper escaper_;
    std::size_t level_ = 0;  ///< how often what is appended is to be escaped
};

}  // namespace

String TextOfContent(const CIMValue& value) {
    return MakeText([&](TextSink& out) { ObjectWriter(out).Content(value); });
}

std::size_t BytesOfContent(const CIMValue& value) {
    TextSink length;
    ObjectWriter(length).Content(value);
    return length.bytes();
}

}  // namespace Pegasus::kalvex::detail
