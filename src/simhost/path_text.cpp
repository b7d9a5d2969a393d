#include "simhost/path_text.h"

#include <algorithm>

#include "simhost/text.h"

namespace simhost {

namespace {

/// Takes the text up to `end` off the front, and `end` with it.
std::optional<std::string> TakeUntil(std::string_view& text, char end) {
    const auto at = text.find(end);
    if (at == std::string_view::npos) {
        return std::nullopt;
    }
    std::string taken(text.substr(0, at));
    text.remove_prefix(at + 1);
    return taken;
}

std::optional<std::string> TakeQuoted(std::string_view& text) {
    std::string value;
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i] == '"') {
            text.remove_prefix(i + 1);
            return value;
        }
        if (text[i] == '\\' && ++i == text.size()) {
            break;
        }
        value += text[i];
    }
    return std::nullopt;
}

std::string TakePlain(std::string_view& text) {
    const auto end = std::min(text.find(','), text.size());
    std::string value(text.substr(0, end));
    text.remove_prefix(end);
    return value;
}

std::optional<KeyBinding> TakeKey(std::string_view& text) {
    const auto name = TakeUntil(text, '=');
    if (!name || !IsCimName(*name) || text.empty()) {
        return std::nullopt;
    }
    if (text.front() == '"') {
        auto value = TakeQuoted(text);
        return value ? std::optional(KeyBinding{*name, "string", *value}) : std::nullopt;
    }
    const std::string value = TakePlain(text);
    const bool boolean = EqualIgnoringCase(value, "true") || EqualIgnoringCase(value, "false");
    return KeyBinding{*name, boolean ? "boolean" : "numeric", value};
}

}  // namespace

std::optional<ObjectPath> ParsePath(std::string_view text) {
    const auto class_name = TakeUntil(text, '.');
    if (!class_name || !IsCimName(*class_name)) {
        return std::nullopt;
    }
    ObjectPath path{*class_name, {}};
    do {
        const auto key = TakeKey(text);
        if (!key || (!text.empty() && text.front() != ',')) {
            return std::nullopt;
        }
        path.keys.push_back(*key);
        text.remove_prefix(text.empty() ? 0 : 1);
    } while (!text.empty());
    SortKeys(path);
    return path;
}

void SortKeys(ObjectPath& path) {
    std::stable_sort(
        path.keys.begin(), path.keys.end(),
        [](const KeyBinding& a, const KeyBinding& b) { return LessIgnoringCase(a.name, b.name); });
}

}  // namespace simhost
