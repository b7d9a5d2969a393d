#include "simhost/http_message.h"

#include <charconv>
#include <utility>

#include "simhost/text.h"

namespace simhost {

namespace {

/// Takes the text up to `separator`, or all of it, off the front.
std::string_view Take(std::string_view& text, std::string_view separator) {
    const auto at = text.find(separator);
    const std::string_view taken = text.substr(0, at);
    text.remove_prefix(at == std::string_view::npos ? text.size() : at + separator.size());
    return taken;
}

}  // namespace

HttpHead::HttpHead(std::string text) : text_(std::move(text)) {
    std::string_view rest = text_;
    std::string_view line = Take(rest, "\r\n");
    method_ = Take(line, " ");
    target_ = Take(line, " ");
    version_ = line;
}

std::optional<std::string_view> HttpHead::Header(std::string_view name) const {
    std::string_view rest = text_;
    Take(rest, "\r\n");
    while (!rest.empty()) {
        std::string_view value = Take(rest, "\r\n");
        if (EqualIgnoringCase(Trimmed(Take(value, ":")), name)) {
            return Trimmed(value);
        }
    }
    return std::nullopt;
}

bool HttpHead::HeaderHas(std::string_view name, std::string_view word) const {
    std::string_view words = Header(name).value_or("");
    while (!words.empty()) {
        if (EqualIgnoringCase(Trimmed(Take(words, ",")), word)) {
            return true;
        }
    }
    return false;
}

std::optional<std::size_t> ContentLength(const HttpHead& head) {
    const auto text = head.Header("Content-Length");
    std::size_t length = 0;
    if (!text ||
        std::from_chars(text->data(), text->data() + text->size(), length).ptr !=
            text->data() + text->size() ||
        text->empty()) {
        return std::nullopt;
    }
    return length;
}

}  // namespace simhost
