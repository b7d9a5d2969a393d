#include "simhost/description_values.h"

#include <nlohmann/json.hpp>

#include "simhost/text.h"

namespace simhost {

namespace {

[[noreturn]] void FailMismatch(const DescriptionNode& value, const std::string& type,
                               const std::string& remedy) {
    value.Fail("a value of type " + type + " is expected, not " + value.json().type_name(), remedy);
}

std::string IntegerText(const DescriptionNode& value, const CimType& type) {
    const Json& json = value.json();
    const bool in_range = json.is_number_unsigned() ? json.get<std::uint64_t>() <= type.most
                                                    : json.get<std::int64_t>() >= type.least;
    if (!in_range) {
        value.Fail(json.dump() + " is out of range for " + std::string(type.name),
                   "write " + std::to_string(type.least) + " to " + std::to_string(type.most) +
                       ", or a string to send it all the same");
    }
    return json.dump();
}

std::string RealText(const Json& json) {
    const std::string text = json.dump();
    return text.find_first_of(".e") == std::string::npos ? text + ".0" : text;
}

std::string ScalarText(const DescriptionNode& value, const CimType& type) {
    const Json& json = value.json();
    if (json.is_string()) {
        return json.get<std::string>();
    }
    switch (type.family) {
        case TypeFamily::kBoolean:
            if (json.is_boolean()) {
                return json.get<bool>() ? "TRUE" : "FALSE";
            }
            FailMismatch(value, "boolean", "write true, false or null");
        case TypeFamily::kInteger:
            if (json.is_number_integer()) {
                return IntegerText(value, type);
            }
            FailMismatch(value, std::string(type.name), "write a whole number, a string or null");
        case TypeFamily::kReal:
            if (json.is_number()) {
                return RealText(json);
            }
            FailMismatch(value, std::string(type.name), "write a number, a string or null");
        case TypeFamily::kText:
            break;
    }
    FailMismatch(value, std::string(type.name), "write it in double quotes, or null");
}

std::string ValueElement(const std::string& text) {
    return "<VALUE>" + XmlText(text) + "</VALUE>\n";
}

/// What {"xml": "..."} says, if the value is one.
std::optional<std::string> RawXml(const DescriptionNode& value) {
    if (!value.json().is_object()) {
        return std::nullopt;
    }
    value.AllowOnly({"xml"});
    const std::string remedy = "write {\"xml\": \"<VALUE>...</VALUE>\"}";
    return value.Required("xml", remedy).Text(remedy) + "\n";
}

std::string ArrayXml(const DescriptionNode& value, const CimType& type) {
    std::string xml = "<VALUE.ARRAY>\n";
    for (const DescriptionNode& element :
         value.Elements("write [...], as the property is an array, or null")) {
        if (const auto raw = RawXml(element)) {
            xml += *raw;
        } else if (element.json().is_null()) {
            xml += "<VALUE.NULL/>\n";
        } else {
            xml += ValueElement(ScalarText(element, type));
        }
    }
    return xml + "</VALUE.ARRAY>\n";
}

/// The type that a qualifier's value has by the way it is written.
const CimType& QualifierType(const DescriptionNode& value) {
    const Json& json =
        value.json().is_array() && !value.json().empty() ? value.json().front() : value.json();
    const char* name = json.is_boolean()          ? "boolean"
                       : json.is_number_integer() ? "sint64"
                       : json.is_number()         ? "real64"
                                                  : "string";
    return *FindCimType(name);
}

}  // namespace

std::string ValueXml(const DescriptionNode& value, const CimType& type, bool array) {
    if (value.json().is_null()) {
        return "";
    }
    if (auto raw = RawXml(value)) {
        return *std::move(raw);
    }
    if (array) {
        return ArrayXml(value, type);
    }
    if (value.json().is_array()) {
        FailMismatch(
            value, std::string(type.name),
            "write one value, or declare the property as \"" + std::string(type.name) + "[]\"");
    }
    return ValueElement(ScalarText(value, type));
}

std::string KeyText(const DescriptionNode& value, const CimType& type) {
    if (value.json().is_null() || value.json().is_structured()) {
        value.Fail("a key needs one plain value", "write a string, a number, true or false");
    }
    return ScalarText(value, type);
}

std::string QualifiersXml(const DescriptionNode& qualifiers) {
    std::string xml;
    for (const DescriptionNode& qualifier :
         qualifiers.Members("write {\"ValueMap\": [...], \"Values\": [...]}")) {
        const CimType& type = QualifierType(qualifier);
        xml += "<QUALIFIER NAME=\"" + XmlText(qualifier.name()) + "\" TYPE=\"" +
               std::string(type.name) + "\">\n" +
               ValueXml(qualifier, type, qualifier.json().is_array()) + "</QUALIFIER>\n";
    }
    return xml;
}

}  // namespace simhost
