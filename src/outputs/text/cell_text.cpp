#include "outputs/text/cell_text.h"

#include <charconv>

namespace outputs {

namespace {

constexpr const char* kBetweenElements = ", ";

/// Writes each kind of value into a text, or gives the record's own.
struct Maker {
    std::string& made;

    std::string_view operator()(std::monostate /*null*/) const { return {}; }
    std::string_view operator()(std::string_view text) const { return text; }
    std::string_view operator()(bool value) const { return value ? "yes" : "no"; }

    std::string_view operator()(std::int64_t number) const {
        made.clear();
        Append(number);
        return made;
    }

    std::string_view operator()(const schema::DateTime& time) const {
        made = schema::ReadableTextOf(time);
        return made;
    }

    template <class Element>
    std::string_view operator()(const std::vector<Element>& elements) const {
        made.clear();
        for (const Element& element : elements) {
            made += made.empty() ? "" : kBetweenElements;
            Append(element);
        }
        return made;
    }

    void Append(std::string_view text) const { made += text; }

    void Append(std::int64_t number) const {
        char digits[24];
        made.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
    }
};

}  // namespace

std::string_view CellText::Of(const schema::Cell& cell) { return std::visit(Maker{made_}, cell); }

}  // namespace outputs
