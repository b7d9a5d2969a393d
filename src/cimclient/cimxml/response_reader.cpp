#include "cimxml/response_reader.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string>

#include "Pegasus/Client/CIMClientException.h"
#include "ascii.h"
#include "cimxml/object_reader.h"
#include "common/text/utf8.h"
#include "explained.h"
#include "object_model/arena.h"
#include "object_model/memory_budget.h"
#include "object_model/object_text.h"
#include "object_model/value_body.h"
#include "reply_limits.h"

namespace cimclient {

using namespace Pegasus;
using Pegasus::detail::MemoryBudget;

namespace {

/// What differs between the replies of two operations.
template <class Object>
struct Operation {
    const char* name;
    const char* result_element;
    Object (ObjectReader::*read)();
};

constexpr Operation<CIMInstance> kEnumerateInstances = {"EnumerateInstances", "VALUE.NAMEDINSTANCE",
                                                        &ObjectReader::ReadNamedInstance};
constexpr Operation<CIMObject> kAssociators = {"Associators", "VALUE.OBJECTWITHPATH",
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
           std::all_of(version.begin() + 2, version.end(), IsDigit);
}

[[noreturn]] void FailResponse(const std::string& message) {
    throw CIMClientResponseException(String::FromUtf8(message));
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
        FailResponse("Received unsupported protocol version \"" + version +
                     "\", expected \"1.[0-9]+\"");
    }
    const std::string expected = std::to_string(message_id);
    if (id != expected) {
        FailResponse("Mismatched response message ID:  Got \"" + id + "\", expected \"" + expected +
                     "\".");
    }
    xml.ExpectOpen("MESSAGE");
    xml.ExpectOpen("SIMPLERSP");
}

int ErrorCode(XmlReader& xml) {
    const std::string text = Required(xml, "ERROR", "CODE", "missing");
    int code = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, code);
    if (result.ec != std::errc() || result.ptr != end) {
        xml.FailValidation("missing ERROR.CODE attribute");
    }
    return code;
}

std::optional<CIMException> ReadError(XmlReader& xml) {
    const int code = ErrorCode(xml);
    const std::string_view description = xml.FindAttribute("DESCRIPTION").value_or("");
    const std::string quoted = Zentar::RepairedUtf8(description.substr(0, kMaxQuotedBytes));
    const CIMException error(static_cast<CIMStatusCode>(code), String::FromUtf8(quoted));
    xml.Advance();
    ObjectReader reader(xml);
    while (xml.IsOpen("INSTANCE")) {
        reader.ReadInstance();  // says more of the error, which nobody asks for
    }
    xml.ExpectClose("ERROR");
    return code != 0 ? std::optional(error) : std::nullopt;
}

/// Steps over the opening IMETHODRESPONSE and returns whether it is this operation's.
template <class Object>
bool ReadResponseHead(XmlReader& xml, const Operation<Object>& operation) {
    if (!xml.IsOpen("IMETHODRESPONSE")) {
        xml.FailValidation("Expected open of IMETHODRESPONSE element");
    }
    const std::string name = Required(xml, "IMETHODRESPONSE", "NAME", "missing");
    xml.Advance();
    return EqualNoCase(name, operation.name);
}

void ReadClose(XmlReader& xml, const char* element) {
    xml.Whole([&] { xml.ExpectClose(element); });
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
Array<Object> ReadReturnValue(XmlReader& xml, const Operation<Object>& operation, bool is_own) {
    ObjectReader reader(xml);
    Array<Object> objects;
    const auto read_next = [&]() -> std::optional<Object> {
        // A reply that calls itself another operation's may only be empty.
        if (is_own && xml.IsOpen(operation.result_element)) {
            return (reader.*operation.read)();
        }
        return std::nullopt;
    };
    xml.Whole([&] { xml.ExpectOpen("IRETURNVALUE"); });
    while (auto object = xml.Whole(read_next)) {
        TakeTexts(*object);
        objects.append(std::move(*object));
    }
    ReadClose(xml, "IRETURNVALUE");
    return objects;
}

template <class Object>
Array<Object> ReadMessage(const XmlReader::Source& body, unsigned message_id,
                          const Operation<Object>& operation) {
    const Pegasus::detail::Arena arena;
    XmlReader xml(body);
    const bool is_own = xml.Whole([&] {
        ReadMessageHead(xml, message_id);
        return ReadResponseHead(xml, operation);
    });
    const auto error = xml.Whole(
        [&] { return xml.IsOpen("ERROR") ? ReadError(xml) : std::optional<CIMException>(); });
    Array<Object> objects;
    if (!error && xml.Whole([&] { return xml.IsOpen("IRETURNVALUE"); })) {
        objects = ReadReturnValue(xml, operation, is_own);
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
                        const Operation<Object>& operation) {
    MemoryBudget budget(kMemoryBesides);
    const XmlReader::Source counted = [&] {
        const std::string_view part = body();
        budget.Allow(kMemoryPerReplyByte * part.size());
        return part;
    };
    try {
        return ReadMessage(counted, message_id, operation);
    } catch (const Pegasus::detail::BudgetExceeded&) {
        throw Of<CIMClientXmlException>(Zentar::FailureKind::kBadReply,
                                        "The objects of the reply would take too much memory.");
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
