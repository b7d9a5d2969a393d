#include "schema/cell.h"

#include <charconv>
#include <optional>

namespace schema {

namespace {

/// Elements are followed by a blank each, the last one perhaps not.
constexpr char kAfterElement = ' ';

constexpr std::string_view kTrue = "TRUE";
constexpr std::string_view kFalse = "FALSE";

std::optional<std::int64_t> IntegerOf(std::string_view text) {
    std::int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

std::optional<bool> BooleanOf(std::string_view text) {
    if (text == kTrue || text == kFalse) {
        return text == kTrue;
    }
    return std::nullopt;
}

TextList ElementsOf(std::string_view text) {
    TextList elements;
    while (!text.empty()) {
        const std::size_t end = text.find(kAfterElement);
        elements.push_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return elements;
}

std::optional<IntegerList> IntegersOf(std::string_view text) {
    IntegerList numbers;
    for (const std::string_view element : ElementsOf(text)) {
        const auto number = IntegerOf(element);
        if (!number) {
            return std::nullopt;
        }
        numbers.push_back(*number);
    }
    return numbers;
}

template <class Value>
Cell ValueOrText(const std::optional<Value>& value, std::string_view text) {
    return value ? Cell(*value) : Cell(text);
}

/// Makes the text of each kind of value.
struct TextMaker {
    std::string operator()(std::monostate /*null*/) const { return {}; }
    std::string operator()(std::string_view text) const { return std::string(text); }
    std::string operator()(std::int64_t number) const { return std::to_string(number); }
    std::string operator()(bool value) const { return std::string(value ? kTrue : kFalse); }
    std::string operator()(const DateTime& time) const { return CimTextOf(time); }

    std::string operator()(const TextList& elements) const {
        std::string text;
        for (const std::string_view element : elements) {
            text.append(element).push_back(kAfterElement);
        }
        return text;
    }

    std::string operator()(const IntegerList& numbers) const {
        std::string text;
        for (const std::int64_t number : numbers) {
            text.append(std::to_string(number)).push_back(kAfterElement);
        }
        return text;
    }
};

}  // namespace

const char* WordOf(Type type) {
    constexpr const char* kWords[] = {"text",      "integer",      "boolean",
                                      "date-time", "list of text", "list of integers"};
    return kWords[static_cast<std::size_t>(type)];
}

Cell CellOf(Type type, std::string_view text) {
    if (text.empty()) {
        return {};
    }
    switch (type) {
        case Type::kText:
            return text;
        case Type::kInteger:
            return ValueOrText(IntegerOf(text), text);
        case Type::kBoolean:
            return ValueOrText(BooleanOf(text), text);
        case Type::kDateTime:
            return ValueOrText(DateTimeOfCim(text), text);
        case Type::kTextList:
            return ElementsOf(text);
        case Type::kIntegerList:
            return ValueOrText(IntegersOf(text), text);
    }
    return text;
}

std::string TextOf(const Cell& cell) { return std::visit(TextMaker{}, cell); }

}  // namespace schema
