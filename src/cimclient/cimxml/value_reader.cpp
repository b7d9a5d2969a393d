#include "cimxml/value_reader.h"

#include <string>

#include "cimxml/object_reader.h"
#include "common/text/utf8.h"
#include "object_model/datetime.h"
#include "object_model/value_body.h"
#include "object_model/value_texts.h"

namespace cimclient {

namespace {

using namespace Pegasus;
using Pegasus::detail::IsEmbedded;
using Pegasus::detail::Shared;
using Pegasus::detail::ValueAccess;
using Pegasus::detail::ValueBody;

/// The text that a scalar prints as; nothing for a text that does not suit the type.
using TextReader = std::optional<String> (*)(std::string_view text, TextCache& cache);

std::optional<String> ReadBoolean(std::string_view text, TextCache& cache) {
    const auto value = Pegasus::detail::BooleanOf(text);
    return value ? std::optional(cache.Text(Pegasus::detail::BooleanText(*value))) : std::nullopt;
}

/// Whether a text that is an integer is also what the integer prints as: all but those with leading
/// zeros, a plus sign or hexadecimal digits, and "-0".
bool IsPrintedNumber(std::string_view text) {
    const char first_digit = text[text[0] == '-' ? 1 : 0];
    return text == "0" || (first_digit >= '1' && first_digit <= '9');
}

template <class Integer>
std::optional<String> ReadInteger(std::string_view text, TextCache& cache) {
    const auto number = Pegasus::detail::IntegerOf<Integer>(text);
    if (!number) {
        return std::nullopt;
    }
    return cache.Text(IsPrintedNumber(text) ? text : std::string_view(std::to_string(*number)));
}

/// A real32 beyond the range of its type becomes infinity or zero.
template <class Real>
std::optional<String> ReadReal(std::string_view text, TextCache& cache) {
    const auto real = Pegasus::detail::LenientReal(text);
    return real ? std::optional(cache.Text(Pegasus::detail::RealText(static_cast<Real>(*real))))
                : std::nullopt;
}

std::optional<String> ReadChar16(std::string_view text, TextCache& cache) {
    constexpr std::size_t kMostBytes = 3;  // of a character that is one unit of UTF-16
    const bool is_one = !text.empty() && text.size() <= kMostBytes &&
                        Zentar::FirstUnit(text).bytes.size() == text.size();
    return is_one ? std::optional(cache.Text(text)) : std::nullopt;
}

std::optional<String> ReadString(std::string_view text, TextCache& cache) {
    return cache.Text(text);
}

std::optional<String> ReadDateTime(std::string_view text, TextCache& cache) {
    const std::string_view stamp = text.empty() ? Pegasus::detail::kZeroInterval : text;
    return Pegasus::detail::IsDateTime(stamp) ? std::optional(cache.Text(stamp)) : std::nullopt;
}

/// References come as elements, embedded objects are no texts.
std::optional<String> ReadNothing(std::string_view, TextCache&) { return std::nullopt; }

/// In the order of CIMType.
constexpr TextReader kTextReaders[] = {
    ReadBoolean,         ReadInteger<Uint8>,  ReadInteger<Sint8>,  ReadInteger<Uint16>,
    ReadInteger<Sint16>, ReadInteger<Uint32>, ReadInteger<Sint32>, ReadInteger<Uint64>,
    ReadInteger<Sint64>, ReadReal<Real32>,    ReadReal<Real64>,    ReadChar16,
    ReadString,          ReadDateTime,        ReadNothing,         ReadNothing,
    ReadNothing,
};

std::optional<CIMObject> ReadObject(std::string_view text, CIMType type) {
    auto object = ReadEmbeddedObject(text);
    const bool suits =
        object && (type == CIMTYPE_OBJECT || !Pegasus::detail::BodyOf(*object).is_class);
    return suits ? std::move(object) : std::nullopt;
}

/// Appends an element, or marks its place as unreadable.
template <class Element>
void AppendElement(ValueBody& body, Array<Element>& elements, std::optional<Element> element) {
    if (!element) {
        body.unreadable.resize(elements.size() + 1);
        body.unreadable.back() = true;
    } else if (!body.unreadable.empty()) {
        body.unreadable.push_back(false);
    }
    elements.append(element ? std::move(*element) : Element());
}

}  // namespace

CIMValue ScalarFrom(CIMType type, const ValueText& text, TextCache& cache) {
    if (!text) {
        return CIMValue(type, false);
    }
    if (IsEmbedded(type)) {
        const auto object = ReadObject(*text, type);
        return object ? ValueAccess::MakeScalar(type, *object) : CIMValue(type, false);
    }
    auto printed = kTextReaders[type](*text, cache);
    return printed ? ValueAccess::MakeScalar(type, std::move(*printed)) : CIMValue(type, false);
}

CIMValue ArrayFrom(CIMType type, const ValueTexts& texts, TextCache& cache) {
    Shared<ValueBody> body(new ValueBody);
    const auto count = static_cast<Uint32>(texts.size());
    if (count > 0 && IsEmbedded(type)) {
        body->objects.reserveCapacity(count);
    } else if (count > 0) {
        body->texts.reserveCapacity(count);
    }
    for (const ValueText& text : texts) {
        if (IsEmbedded(type)) {
            AppendElement(*body, body->objects, text ? ReadObject(*text, type) : std::nullopt);
        } else {
            AppendElement(*body, body->texts,
                          text ? kTextReaders[type](*text, cache) : std::nullopt);
        }
    }
    return ValueAccess::MakeArray(type, std::move(body));
}

}  // namespace cimclient
