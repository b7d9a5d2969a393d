#include "cimxml/response_reader.h"

#include <algorithm>
#include <optional>
#include <string>

#include "cimxml/object_reader.h"
#include "common/text/ascii.h"
#include "common/text/number.h"
#include "object_model/arena.h"
#include "object_model/memory_budget.h"
#include "object_model/object_text.h"
#include "object_model/value_body.h"
#include "reply_errors.h"
#include "reply_limits.h"

namespace cimclient {

using namespace Pegasus;
using Pegasus::detail::MemoryBudget;

namespace {

/// How the replies of one operation differ from those of another.
template <class Object>
struct Format {
    const char* name;
    const char* result_element;
    Object (ObjectReader::*read)();
};

constexpr Format<CIMInstance> kEnumerateInstances = {"EnumerateInstances", "VALUE.NAMEDINSTANCE",
                                                     &ObjectReader::ReadNamedInstance};
constexpr Format<CIMObject> kAssociators = {"Associators", "VALUE.OBJECTWITHPATH",
                                            &ObjectReader::ReadObjectWithPath};

std::string Required(XmlReader& xml, const char* element, const char* attribute,
                     const char* complaint) {
    const auto value = xml.FindAttribute(attribute);
    if (!value) {
        xml.FailValidation(std::string(complaint) + " " + element + "." + attribute + " attribute");
    }
    return std::string(value->substr(0, kMaxQuotedBytes));
}

bool IsSupportedProtocol(std::string_view version) {
    return version.size() > 2 && version.starts_with("1.") &&
           std::all_of(version.begin() + 2, version.end(), Zentar::IsDigit);
}

void ReadMessageHead(XmlReader& xml, unsigned message_id) {
    xml.RequireDeclaration();
    if (!xml.IsOpen("CIM")) {
        xml.FailValidation("Expected open of CIM element");
    }
    Required(xml, "CIM", "CIMVERSION", "missing");
    Required(xml, "CIM", "DTDVERSION", "missing");
    xml.ExpectOpen("CIM");
    if (!xml.IsOpen("MESSAGE")) {
        xml.FailValidation("Expected open of MESSAGE element");
    }
    const std::string id = Required(xml, "MESSAGE", "ID", "Invalid or missing");
    const std::string version = Required(xml, "MESSAGE", "PROTOCOLVERSION", "Invalid or missing");
    if (!IsSupportedProtocol(version)) {
        throw ResponseError{
            {"Received unsupported protocol version \"" + version + "\", expected \"1.[0-9]+\""}};
    }
    const std::string expected = std::to_string(message_id);
    if (id != expected) {
        throw ResponseError{{"Mismatched response message ID:  Got \"" + id + "\", expected \"" +
                             expected + "\"."}};
    }
    xml.ExpectOpen("MESSAGE");
    xml.ExpectOpen("SIMPLERSP");
}

std::optional<StatusError> ReadError(XmlReader& xml) {
    const auto status = Zentar::NumberOf<int>(Required(xml, "ERROR", "CODE", "missing"));
    if (!status) {
        xml.FailValidation("missing ERROR.CODE attribute");
    }
    const std::string_view description = xml.FindAttribute("DESCRIPTION").value_or("");
    const StatusError error{{std::string(description.substr(0, kMaxQuotedBytes))}, *status};
    xml.Advance();
    ObjectReader reader(xml);
    while (xml.IsOpen("INSTANCE")) {
        reader.ReadInstance();  // says more of the error, which nobody asks for
    }
    xml.ExpectClose("ERROR");
    return *status != 0 ? std::optional(error) : std::nullopt;
}

/// Steps over the opening IMETHODRESPONSE and returns whether it is this operation's.
template <class Object>
bool ReadResponseHead(XmlReader& xml, const Format<Object>& format) {
    if (!xml.IsOpen("IMETHODRESPONSE")) {
        xml.FailValidation("Expected open of IMETHODRESPONSE element");
    }
    const std::string name = Required(xml, "IMETHODRESPONSE", "NAME", "missing");
    xml.Advance();
    return Zentar::EqualNoCase(name, format.name);
}

void ReadClose(XmlReader& xml, const char* element) {
    xml.Retrying([&] { xml.ExpectClose(element); });
}

/// The texts of embedded objects are made when they are asked for, and then outlive the reply: they
/// count from the beginning.
void TakeTexts(const Pegasus::detail::ObjectHandle& object) {
    for (Uint32 i = 0; i < object.getPropertyCount(); ++i) {
        const CIMConstProperty property = object.getProperty(i);
        if (Pegasus::detail::IsEmbedded(property.getType()) && !property.getValue().isNull()) {
            MemoryBudget::Take(Pegasus::detail::BytesOfContent(property.getValue()));
        }
    }
}

template <class Object>
Array<Object> ReadReturnValue(XmlReader& xml, const Format<Object>& format, bool is_own) {
    ObjectReader reader(xml);
    Array<Object> objects;
    const auto read_next = [&]() -> std::optional<Object> {
        // A reply that calls itself another operation's may only be empty.
        if (is_own && xml.IsOpen(format.result_element)) {
            return (reader.*format.read)();
        }
        return std::nullopt;
    };
    xml.Retrying([&] { xml.ExpectOpen("IRETURNVALUE"); });
    while (auto object = xml.Retrying(read_next)) {
        TakeTexts(*object);
        objects.append(std::move(*object));
    }
    ReadClose(xml, "IRETURNVALUE");
    return objects;
}

template <class Object>
Array<Object> ReadMessage(const XmlReader::Source& body, unsigned message_id,
                          const Format<Object>& format) {
    const Pegasus::detail::Arena arena;
    XmlReader xml(body);
    const bool is_own = xml.Retrying([&] {
        ReadMessageHead(xml, message_id);
        return ReadResponseHead(xml, format);
    });
    const auto error = xml.Retrying(
        [&] { return xml.IsOpen("ERROR") ? ReadError(xml) : std::optional<StatusError>(); });
    Array<Object> objects;
    if (!error && xml.Retrying([&] { return xml.IsOpen("IRETURNVALUE"); })) {
        objects = ReadReturnValue(xml, format, is_own);
    }
    for (const char* element : {"IMETHODRESPONSE", "SIMPLERSP", "MESSAGE", "CIM"}) {
        ReadClose(xml, element);
    }
    if (error) {
        throw *error;
    }
    return objects;
}

template <class Object>
Array<Object> ReadReply(const XmlReader::Source& body, unsigned message_id,
                        const Format<Object>& format) {
    MemoryBudget budget(kMemoryBesides);
    const XmlReader::Source counted = [&] {
        const std::string_view part = body();
        budget.Allow(kMemoryPerReplyByte * part.size());
        return part;
    };
    try {
        return ReadMessage(counted, message_id, format);
    } catch (const Pegasus::detail::BudgetExceeded&) {
        throw XmlError{{"The objects of the reply would take too much memory."}};
    }
}

}  // namespace

Array<CIMInstance> ReadInstances(const XmlReader::Source& body, unsigned message_id) {
    return ReadReply(body, message_id, kEnumerateInstances);
}

Array<CIMObject> ReadObjects(const XmlReader::Source& body, unsigned message_id) {
    return ReadReply(body, message_id, kAssociators);
}

}  // namespace cimclient
