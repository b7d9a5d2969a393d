#include "cimxml/object_reader.h"

#include "Pegasus/Client/CIMClientException.h"
#include "Pegasus/Common/CIMClass.h"
#include "cimxml/embedded_object.h"
#include "cimxml/object_assembly.h"
#include "cimxml/value_reader.h"
#include "object_model/value_texts.h"
#include "reply_limits.h"

namespace cimclient {

using namespace Pegasus;

/// One PROPERTY, PROPERTY.ARRAY or PROPERTY.REFERENCE while it is read.
struct ObjectReader::PropertyElement {
    CIMName name;
    std::optional<CIMType> type;
    CIMName class_origin;
    CIMName reference_class;
    bool propagated = false;
    bool is_array = false;
    bool is_reference = false;
    std::string array_size;
    std::vector<CIMQualifier> qualifiers;
    CIMValue value;
};

namespace {

/// The type of the objects that a text property carries, if it does.
std::optional<CIMType> EmbeddedType(std::string_view attribute) {
    if (attribute == "object") {
        return CIMTYPE_OBJECT;
    }
    return attribute == "instance" ? std::optional(CIMTYPE_INSTANCE) : std::nullopt;
}

std::optional<CIMType> EmbeddedType(const std::vector<CIMQualifier>& qualifiers) {
    for (const CIMQualifier& qualifier : qualifiers) {
        if (qualifier.getName() == CIMName("EmbeddedObject") &&
            qualifier.getValue() == CIMValue(true)) {
            return CIMTYPE_OBJECT;
        }
        if (qualifier.getName() == CIMName("EmbeddedInstance")) {
            return CIMTYPE_INSTANCE;
        }
    }
    return std::nullopt;
}

bool IsEmbedded(CIMType type) { return type == CIMTYPE_OBJECT || type == CIMTYPE_INSTANCE; }

/// The fixed size that the attribute declares, if the value has it.
Uint32 DeclaredSize(const std::string& attribute, const CIMValue& value) {
    const auto size = Pegasus::detail::LenientUnsigned(attribute);
    return size && value.isArray() && *size == value.getArraySize() ? value.getArraySize() : 0;
}

}  // namespace

bool ObjectReader::Flag(const char* attribute, bool default_value) {
    return Pegasus::detail::BooleanOf(Attribute(attribute)).value_or(default_value);
}

CIMInstance ObjectReader::ReadNamedInstance() {
    xml_.ExpectOpen("VALUE.NAMEDINSTANCE");
    if (!xml_.IsOpen("INSTANCENAME")) {
        xml_.FailValidation("Expected INSTANCENAME element");
    }
    const CIMObjectPath path = ReadInstanceName();
    CIMInstance instance = ReadInstance();
    xml_.ExpectClose("VALUE.NAMEDINSTANCE");
    SetPath(instance, path);
    return instance;
}

CIMObject ObjectReader::ReadObjectWithPath() {
    xml_.ExpectOpen("VALUE.OBJECTWITHPATH");
    if (!xml_.IsOpen("INSTANCEPATH") && !xml_.IsOpen("CLASSPATH")) {
        xml_.FailValidation("Expected INSTANCEPATH or CLASSPATH element");
    }
    const CIMObjectPath path = ReadFullPath();
    CIMObject object = xml_.IsOpen("CLASS") ? ReadClass() : CIMObject(ReadInstance());
    xml_.ExpectClose("VALUE.OBJECTWITHPATH");
    SetPath(object, path);
    return object;
}

CIMObject ObjectReader::ReadClass() {
    const CIMName name = ClassAttribute("CLASS", "NAME");
    xml_.SkipElement();
    return CIMObject(CIMClass(name));
}

CIMInstance ObjectReader::ReadInstance() {
    if (!xml_.IsOpen("INSTANCE")) {
        xml_.FailValidation("Expected INSTANCE element");
    }
    const CIMName class_name = ClassAttribute("INSTANCE", "CLASSNAME");
    xml_.Advance();
    std::vector<CIMQualifier> qualifiers;
    std::vector<CIMProperty> properties;
    while (!xml_.IsClose()) {
        const std::string_view element = xml_.Peek().name;
        if (xml_.Peek().kind != XmlToken::kOpen) {
            xml_.Advance();
        } else if (element == "QUALIFIER") {
            ReadQualifier(qualifiers);
        } else if (element == "PROPERTY" || element == "PROPERTY.ARRAY" ||
                   element == "PROPERTY.REFERENCE") {
            ReadProperty(properties);
        } else {
            xml_.SkipElement();
        }
    }
    xml_.ExpectClose("INSTANCE");
    return AssembleInstance(class_name, std::move(qualifiers), std::move(properties));
}

void ObjectReader::ReadQualifier(std::vector<CIMQualifier>& qualifiers) {
    const CIMName name = Name(Attribute("NAME"));
    const auto type = TypeNamed(Attribute("TYPE"));
    CIMFlavor flavor;
    const auto add_flavor = [&](const char* attribute, bool default_value, const CIMFlavor& added) {
        if (Flag(attribute, default_value)) {
            flavor.addFlavor(added);
        }
    };
    add_flavor("OVERRIDABLE", true, CIMFlavor::OVERRIDABLE);
    add_flavor("TOSUBCLASS", true, CIMFlavor::TOSUBCLASS);
    add_flavor("TOINSTANCE", false, CIMFlavor::TOINSTANCE);
    add_flavor("TRANSLATABLE", false, CIMFlavor::TRANSLATABLE);
    const bool propagated = Flag("PROPAGATED", false);
    xml_.Advance();
    CIMValue value(type.value_or(CIMTYPE_STRING), false);
    if (type && xml_.IsOpen("VALUE")) {
        value = ScalarFrom(*type, ReadValueText());
    } else if (type && xml_.IsOpen("VALUE.ARRAY")) {
        value = ArrayFrom(*type, ReadValueArray());
    }
    xml_.SkipToClose();
    if (type && !name.isNull()) {
        qualifiers.emplace_back(name, value, flavor, propagated);
    }
}

void ObjectReader::ReadProperty(std::vector<CIMProperty>& properties) {
    PropertyElement element;
    element.is_array = xml_.Peek().name == "PROPERTY.ARRAY";
    element.is_reference = xml_.Peek().name == "PROPERTY.REFERENCE";
    element.name = Name(Attribute("NAME"));
    element.class_origin = Name(Attribute("CLASSORIGIN"));
    element.reference_class = Name(Attribute("REFERENCECLASS"));
    element.propagated = Flag("PROPAGATED", false);
    element.array_size = Attribute("ARRAYSIZE");
    element.type = element.is_reference ? CIMTYPE_REFERENCE : TypeNamed(Attribute("TYPE"));
    if (element.type == CIMTYPE_STRING) {
        const std::string attribute = Attribute("EmbeddedObject") + Attribute("EMBEDDEDOBJECT");
        element.type = EmbeddedType(attribute).value_or(CIMTYPE_STRING);
    }
    xml_.Advance();
    if (!element.type || element.name.isNull()) {
        xml_.SkipToClose();
        return;
    }
    ReadPropertyContent(element);
    CIMProperty property(element.name, element.value,
                         DeclaredSize(element.array_size, element.value),
                         element.is_reference ? element.reference_class : CIMName(),
                         element.class_origin, element.propagated);
    SetQualifiers(property, std::move(element.qualifiers));
    properties.push_back(property);
}

void ObjectReader::ReadPropertyContent(PropertyElement& element) {
    std::optional<ValueText> text;
    std::optional<std::vector<ValueText>> texts;
    std::optional<CIMValue> reference;
    while (!xml_.IsClose()) {
        if (xml_.IsOpen("QUALIFIER")) {
            ReadQualifier(element.qualifiers);
        } else if (!element.is_array && !text && xml_.IsOpen("VALUE")) {
            text = ReadValueText();
        } else if (element.is_array && !texts && xml_.IsOpen("VALUE.ARRAY")) {
            texts = ReadValueArray();
        } else if (element.is_reference && !reference && xml_.IsOpen("VALUE.REFERENCE")) {
            reference = CIMValue(ReadReference());
        } else if (xml_.Peek().kind == XmlToken::kOpen) {
            xml_.SkipElement();
        } else {
            xml_.Advance();
        }
    }
    xml_.Advance();
    if (element.type == CIMTYPE_STRING) {
        element.type = EmbeddedType(element.qualifiers).value_or(CIMTYPE_STRING);
    }
    if (text && IsEmbedded(*element.type) && *text && (*text)->empty()) {
        text.reset();
    }
    element.value = CIMValue(*element.type, element.is_array);
    if (reference) {
        element.value = *reference;
    } else if (text) {
        element.value = ScalarFrom(*element.type, *text);
    } else if (texts) {
        element.value = ArrayFrom(*element.type, *texts);
    }
}

/// A VALUE element. One that holds more than one text is lost.
ValueText ObjectReader::ReadValueText() {
    xml_.ExpectOpen("VALUE");
    std::string text = xml_.ReadText();
    if (!xml_.IsClose()) {
        xml_.SkipToClose();
        return std::nullopt;
    }
    xml_.Advance();
    return text;
}

std::vector<ValueText> ObjectReader::ReadValueArray() {
    xml_.ExpectOpen("VALUE.ARRAY");
    std::vector<ValueText> texts;
    while (!xml_.IsClose()) {
        if (xml_.IsOpen("VALUE")) {
            texts.push_back(ReadValueText());
        } else if (xml_.Peek().kind == XmlToken::kOpen) {
            if (xml_.IsOpen("VALUE.NULL")) {
                texts.push_back(std::nullopt);
            }
            xml_.SkipElement();
        } else {
            xml_.Advance();
        }
    }
    xml_.Advance();
    return texts;
}

std::optional<CIMObject> ReadEmbeddedObject(const std::string& text) {
    // Embedded objects may embed objects in turn; how deep is the host's choice up to a limit.
    thread_local int depth = 0;
    if (depth == kMaxEmbeddingDepth) {
        return std::nullopt;
    }
    ++depth;
    std::optional<CIMObject> object;
    try {
        XmlReader xml(text);
        ObjectReader reader(xml);
        if (xml.IsOpen("INSTANCE")) {
            object = CIMObject(reader.ReadInstance());
        } else if (xml.IsOpen("CLASS")) {
            object = reader.ReadClass();
        }
    } catch (const Exception&) {
        // A text that is no object is one bad value.
    }
    --depth;
    return object;
}

}  // namespace cimclient
