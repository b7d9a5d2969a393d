// HTTP requests as text.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace simhost {

/// A request's first line and headers.
class HttpHead {
public:
    /// `text` ends with the empty line. Keeps a copy.
    explicit HttpHead(std::string text);

    const std::string& text() const { return text_; }
    std::string_view method() const { return method_; }
    std::string_view target() const { return target_; }
    bool is_http_1_1() const { return version_ == "HTTP/1.1"; }
    /// Whether the first line has its three parts.
    bool well_formed() const { return !version_.empty(); }

    /// The header's value without blanks around it; nothing when there is no such header.
    std::optional<std::string_view> Header(std::string_view name) const;
    /// Whether a comma-separated header holds this word, in any case.
    bool HeaderHas(std::string_view name, std::string_view word) const;

private:
    std::string text_;
    std::string method_, target_, version_;
};

/// How long the body is by its header; nothing when that is missing or no number.
std::optional<std::size_t> ContentLength(const HttpHead& head);

}  // namespace simhost
