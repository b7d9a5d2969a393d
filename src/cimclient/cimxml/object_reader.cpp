#include "cimxml/object_reader.h"

#include "cimxml/depth_guard.h"
#include "cimxml/distinct_names.h"
#include "cimxml/value_reader.h"
#include "common/text/ascii.h"
#include "object_model/value_body.h"
#include "object_model/value_texts.h"
#include "reply_errors.h"
#include "reply_limits.h"

namespace cimclient {

using namespace Pegasus;
using Pegasus::detail::ArenaVector;
using Pegasus::detail::ObjectBody;
using Pegasus::detail::PropertyBody;
using Pegasus::detail::Shared;
using Pegasus::detail::TypeNamed;
using Pegasus::detail::ValueAccess;

/// One PROPERTY, PROPERTY.ARRAY or PROPERTY.REFERENCE while it is read.
struct ObjectReader::PropertyElement {
    Shared<PropertyBody> body;
    std::optional<CIMType> type;
    std::optional<CIMType> embedded_type;
    bool is_array = false;
    bool is_reference = false;
};

namespace {

/// The type of the objects that a text property carries, if it does.
std::optional<CIMType> EmbeddedType(std::string_view attribute) {
    if (attribute == "object") {
        return CIMTYPE_OBJECT;
    }
    return attribute == "instance" ? std::optional(CIMTYPE_INSTANCE) : std::nullopt;
}

bool IsTrue(const CIMValue& value) {
    return value.getType() == CIMTYPE_BOOLEAN && !value.isArray() &&
           value.toString().utf8() == Pegasus::detail::BooleanText(true);
}

std::optional<CIMType> EmbeddedType(const ArenaVector<CIMQualifier>& qualifiers) {
    for (const CIMQualifier& qualifier : qualifiers) {
        const std::string_view name = qualifier.getName().getString().utf8();
        if (Zentar::EqualNoCase(name, "EmbeddedObject") && IsTrue(qualifier.getValue())) {
            return CIMTYPE_OBJECT;
        }
        if (Zentar::EqualNoCase(name, "EmbeddedInstance")) {
            return CIMTYPE_INSTANCE;
        }
    }
    return std::nullopt;
}

/// The path that came with an object, whose spelling of the class name wins, or one of the class
/// name alone.
CIMObjectPath PathOf(const CIMName& class_name, const CIMObjectPath* path) {
    if (path == nullptr) {
        return CIMObjectPath(String(), CIMNamespaceName(), class_name);
    }
    if (path->getClassName() != class_name) {
        throw ResponseError{{"type mismatch"}};
    }
    return *path;
}

}  // namespace

CIMInstance ObjectReader::ReadNamedInstance() {
    xml_.ForgetTexts();
    xml_.ExpectOpen("VALUE.NAMEDINSTANCE");
    if (!xml_.IsOpen("INSTANCENAME")) {
        xml_.FailValidation("Expected INSTANCENAME element");
    }
    const CIMObjectPath path = ReadInstanceName();
    CIMInstance instance = ReadInstance(&path);
    xml_.ExpectClose("VALUE.NAMEDINSTANCE");
    return instance;
}

CIMObject ObjectReader::ReadObjectWithPath() {
    xml_.ForgetTexts();
    xml_.ExpectOpen("VALUE.OBJECTWITHPATH");
    if (!xml_.IsOpen("INSTANCEPATH") && !xml_.IsOpen("CLASSPATH")) {
        xml_.FailValidation("Expected INSTANCEPATH or CLASSPATH element");
    }
    const CIMObjectPath path = ReadFullPath();
    CIMObject object = xml_.IsOpen("CLASS") ? ReadClass(&path) : CIMObject(ReadInstance(&path));
    xml_.ExpectClose("VALUE.OBJECTWITHPATH");
    return object;
}

CIMObject ObjectReader::ReadClass(const CIMObjectPath* path) {
    const CIMName name = ClassAttribute("CLASS", "NAME");
    xml_.SkipElement();
    Shared<ObjectBody> body(new ObjectBody);
    body->path = PathOf(name, path);
    body->is_class = true;
    return CIMObject(std::move(body));
}

CIMInstance ObjectReader::ReadInstance(const CIMObjectPath* path) {
    if (!xml_.IsOpen("INSTANCE")) {
        xml_.FailValidation("Expected INSTANCE element");
    }
    const CIMName class_name = ClassAttribute("INSTANCE", "CLASSNAME");
    xml_.Advance();
    qualifiers_.clear();
    properties_.clear();
    while (!xml_.IsClose()) {
        const std::string_view element = xml_.Peek().name;
        if (xml_.Peek().kind != XmlToken::kOpen) {
            xml_.Advance();
        } else if (Is(element, "QUALIFIER")) {
            xml_.ForgetTexts();
            ReadQualifier(qualifiers_);
        } else if (Is(element, "PROPERTY") || Is(element, "PROPERTY.ARRAY") ||
                   Is(element, "PROPERTY.REFERENCE")) {
            ReadProperty();
        } else {
            xml_.SkipElement();
        }
    }
    xml_.ExpectClose("INSTANCE");
    // Past the checks that hand-built instances need.
    Shared<ObjectBody> body(new ObjectBody);
    body->path = PathOf(class_name, path);
    body->qualifiers = FirstOfEachName(qualifiers_);
    body->properties = FirstOfEachName(properties_);
    return CIMInstance(std::move(body));
}

void ObjectReader::ReadQualifier(ArenaVector<CIMQualifier>& qualifiers) {
    const CIMName name = names_.Name(Attribute("NAME"));
    const auto type = TypeNamed(Attribute("TYPE"));
    xml_.Advance();
    CIMValue value(type.value_or(CIMTYPE_STRING), false);
    if (type && xml_.IsOpen("VALUE")) {
        value = ScalarFrom(*type, ReadValueText(), texts_);
    } else if (type && xml_.IsOpen("VALUE.ARRAY")) {
        ReadValueArray(qualifier_texts_);
        value = ArrayFrom(*type, qualifier_texts_, texts_);
    }
    xml_.SkipToClose();
    if (type && !name.isNull()) {
        qualifiers.emplace_back(name, value);
    }
}

ObjectReader::PropertyElement ObjectReader::ReadPropertyHead() {
    PropertyElement element;
    element.body = Shared<PropertyBody>(new PropertyBody);
    element.is_array = xml_.IsOpen("PROPERTY.ARRAY");
    element.is_reference = xml_.IsOpen("PROPERTY.REFERENCE");
    xml_.ForEachAttribute([&](std::string_view attribute, std::string_view value) {
        if (Is(attribute, "NAME")) {
            element.body->name = names_.Name(value);
        } else if (Is(attribute, "TYPE")) {
            element.type = TypeNamed(value);
        } else if (Is(attribute, "EmbeddedObject") || Is(attribute, "EMBEDDEDOBJECT")) {
            element.embedded_type = EmbeddedType(value);
        }
    });
    if (element.is_reference) {
        element.type = CIMTYPE_REFERENCE;
    } else if (element.type == CIMTYPE_STRING && element.embedded_type) {
        element.type = element.embedded_type;
    }
    xml_.Advance();
    return element;
}

void ObjectReader::ReadProperty() {
    xml_.ForgetTexts();
    PropertyElement element = ReadPropertyHead();
    property_qualifiers_.clear();
    if (!element.type || element.body->name.isNull()) {
        xml_.SkipToClose();
        return;
    }
    ReadPropertyContent(element);
    element.body->qualifiers = FirstOfEachName(property_qualifiers_);
    properties_.emplace_back(std::move(element.body));
}

void ObjectReader::ReadPropertyContent(PropertyElement& element) {
    std::optional<ValueText> text;
    bool has_texts = false;
    std::optional<String> reference;
    while (!xml_.IsClose()) {
        if (xml_.IsOpen("QUALIFIER")) {
            ReadQualifier(property_qualifiers_);
        } else if (!element.is_array && !text && xml_.IsOpen("VALUE")) {
            text = ReadValueText();
        } else if (element.is_array && !has_texts && xml_.IsOpen("VALUE.ARRAY")) {
            ReadValueArray(element_texts_);
            has_texts = true;
        } else if (element.is_reference && !reference && xml_.IsOpen("VALUE.REFERENCE")) {
            reference = ReadReference().toString();
        } else if (xml_.Peek().kind == XmlToken::kOpen) {
            xml_.SkipElement();
        } else {
            xml_.Advance();
        }
    }
    xml_.Advance();
    if (element.type == CIMTYPE_STRING && !property_qualifiers_.empty()) {
        element.type = EmbeddedType(property_qualifiers_).value_or(CIMTYPE_STRING);
    }
    if (text && Pegasus::detail::IsEmbedded(*element.type) && *text && (*text)->empty()) {
        text.reset();
    }
    if (reference) {
        element.body->value = ValueAccess::MakeScalar(CIMTYPE_REFERENCE, *reference);
    } else if (text) {
        element.body->value = ScalarFrom(*element.type, *text, texts_);
    } else if (has_texts) {
        element.body->value = ArrayFrom(*element.type, element_texts_, texts_);
    } else {
        element.body->value = CIMValue(*element.type, element.is_array);
    }
}

/// A VALUE element. One that holds more than one text is unreadable.
ValueText ObjectReader::ReadValueText() {
    xml_.ExpectOpen("VALUE");
    const std::string_view text = xml_.ReadText();
    if (!xml_.IsClose()) {
        xml_.SkipToClose();
        return std::nullopt;
    }
    xml_.Advance();
    return text;
}

void ObjectReader::ReadValueArray(ValueTexts& texts) {
    xml_.ExpectOpen("VALUE.ARRAY");
    texts.clear();
    while (!xml_.IsClose()) {
        if (texts.size() == kMaxArrayElements) {
            xml_.FailValidation("There are too many elements in VALUE.ARRAY");
        }
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
}

std::optional<CIMObject> ReadEmbeddedObject(std::string_view text) {
    // Embedded objects may embed objects in turn; how deep is the host's choice up to a limit.
    thread_local int depth = 0;
    if (depth == kMaxEmbeddingDepth) {
        return std::nullopt;
    }
    const DepthGuard level(depth);
    try {
        XmlReader xml(text);
        ObjectReader reader(xml);
        if (xml.IsOpen("INSTANCE")) {
            return CIMObject(reader.ReadInstance());
        }
        if (xml.IsOpen("CLASS")) {
            return reader.ReadClass();
        }
    } catch (const BodyError&) {
        // A text that is no object is one bad value.
    }
    return std::nullopt;
}

}  // namespace cimclient
