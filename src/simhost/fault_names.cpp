// The names of faults, for command lines and files.
#include <charconv>
#include <optional>
#include <stdexcept>

#include "simhost/fault.h"
#include "simhost/fault_limits.h"

namespace simhost::Faults {

namespace {

using std::chrono::milliseconds;

constexpr const char* kSshBanner = "SSH-2.0-OpenSSH_8.3\r\n";
constexpr const char* kHtmlPage =
    "HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nContent-Length: 46\r\n\r\n"
    "<!DOCTYPE html><html><body>Hello</body></html>";

constexpr const char* kOldRefusal =
    "HTTP/1.0 401 Unauthorized\r\nWWW-Authenticate: Basic realm=\"cimom\"\r\n\r\n";

/// What follows "NAME=".
struct Parameters {
    std::optional<std::int64_t> number;
    std::string text;

    std::int64_t NumberOr(std::int64_t otherwise) const { return number.value_or(otherwise); }
    std::size_t CountOr(std::size_t otherwise) const {
        return number && *number >= 0 ? static_cast<std::size_t>(*number) : otherwise;
    }
    std::string TextOr(const char* otherwise) const { return text.empty() ? otherwise : text; }
};

enum class Takes { kNothing, kNumber, kText, kBoth };

/// As it is written after the name.
const char* FormOf(Takes takes) {
    switch (takes) {
        case Takes::kNumber:
            return "=NUMBER";
        case Takes::kText:
            return "=TEXT";
        case Takes::kBoth:
            return "=NUMBER,TEXT";
        case Takes::kNothing:
            break;
    }
    return "";
}

struct Entry {
    const char* name;
    Takes takes;
    const char* meaning;
    Fault (*make)(const Parameters&);
};

const char* StandardReason(std::int64_t status) {
    switch (status) {
        case 400:
            return "Bad Request";
        case 401:
            return "Unauthorized";
        case 403:
            return "Forbidden";
        case 404:
            return "Not Found";
        case 500:
            return "Internal Server Error";
        default:
            return "Service Unavailable";
    }
}

const Entry kEntries[] = {
    {"close", Takes::kNothing, "closes the connection instead of answering",
     [](const Parameters&) { return Close(); }},
    {"reset", Takes::kNothing, "resets the connection instead of answering",
     [](const Parameters&) { return Reset(); }},
    {"stall", Takes::kNothing, "never answers", [](const Parameters&) { return Stall(); }},
    {"raw", Takes::kText, "answers with this text, as it is, and closes",
     [](const Parameters& p) { return Raw(p.text); }},
    {"html-page", Takes::kNothing, "answers with an HTML page",
     [](const Parameters&) { return Raw(kHtmlPage); }},
    {"truncate", Takes::kNumber, "closes after this many bytes of an answer (200)",
     [](const Parameters& p) { return Truncate(p.CountOr(200)); }},
    {"truncate-reset", Takes::kNumber, "resets after this many bytes of an answer (200)",
     [](const Parameters& p) { return Truncate(p.CountOr(200), true); }},
    {"slow-drip", Takes::kNumber, "sends one byte each so many milliseconds (20)",
     [](const Parameters& p) { return SlowDrip(1, milliseconds(p.NumberOr(20))); }},
    {"close-on-connect", Takes::kNothing, "closes each new connection at once",
     [](const Parameters&) { return CloseOnConnect(); }},
    {"stall-on-connect", Takes::kNothing, "accepts connections and does nothing more",
     [](const Parameters&) { return StallOnConnect(); }},
    {"raw-on-connect", Takes::kText, "greets each new connection with this text",
     [](const Parameters& p) { return RawOnConnect(p.text); }},
    {"ssh-banner", Takes::kNothing, "greets like an SSH server",
     [](const Parameters&) { return RawOnConnect(kSshBanner); }},
    {"wrong-length", Takes::kNumber, "announces so many bytes more than it sends (100)",
     [](const Parameters& p) { return WrongLength(p.NumberOr(100)); }},
    {"cim-error-element", Takes::kBoth, "reports this CIM error (1) in an ERROR element",
     [](const Parameters& p) {
         return CimErrorElement(static_cast<unsigned>(p.CountOr(1)), p.TextOr("CIM_ERR_FAILED"));
     }},
    {"cim-error-trailer", Takes::kBoth, "breaks off and reports this CIM error (1) in trailers",
     [](const Parameters& p) {
         return CimErrorTrailer(static_cast<unsigned>(p.CountOr(1)), p.TextOr("CIM_ERR_FAILED"));
     }},
    {"http-status", Takes::kBoth, "answers with this HTTP status (503) and reason",
     [](const Parameters& p) {
         const auto status = p.NumberOr(503);
         return HttpStatus(static_cast<int>(status), p.TextOr(StandardReason(status)));
     }},
    {"cim-error-header", Takes::kBoth, "the same with a CIMError header of this value",
     [](const Parameters& p) {
         const auto status = p.NumberOr(400);
         return HttpStatus(static_cast<int>(status), StandardReason(status),
                           p.TextOr("request-not-valid"));
     }},
    {"content-type", Takes::kText, "gives answers this content type (text/html)",
     [](const Parameters& p) { return ContentType(p.TextOr("text/html")); }},
    {"no-operation-header", Takes::kNothing, "leaves out the CIMOperation header",
     [](const Parameters&) { return OperationHeader(""); }},
    {"wrong-operation-header", Takes::kNothing, "answers with CIMOperation: MethodCall",
     [](const Parameters&) { return OperationHeader("MethodCall"); }},
    {"wrong-message-id", Takes::kText, "answers another message (0)",
     [](const Parameters& p) { return MessageId(p.TextOr("0")); }},
    {"huge-reply", Takes::kNumber, "repeats instances up to so many bytes (300000000)",
     [](const Parameters& p) { return HugeReply(p.CountOr(300'000'000)); }},
    {"close-every", Takes::kNumber, "announces the end of a connection each so many requests (10)",
     [](const Parameters& p) { return CloseEvery(p.CountOr(10)); }},
    {"close-every-silently", Takes::kNumber, "the same without announcing it",
     [](const Parameters& p) { return CloseEvery(p.CountOr(10), false); }},
    {"huge-error", Takes::kNumber, "reports an error of so many bytes (250000000)",
     [](const Parameters& p) { return HugeError(p.CountOr(250'000'000)); }},
    {"nested-quotes", Takes::kNumber,
     "puts so many quotation marks (1000000) into 16 levels of embedded instances",
     [](const Parameters& p) { return NestedQuotes(p.CountOr(1'000'000)); }},
    {"echo-authorization", Takes::kNothing, "repeats the credentials in an error",
     [](const Parameters&) { return EchoAuthorization(); }},
    {"wide-cells", Takes::kNumber, "makes each text so many characters longer (10000)",
     [](const Parameters& p) { return WideCells(p.CountOr(10'000)); }},
    {"many-errors", Takes::kNothing, "reports another error for each request",
     [](const Parameters&) { return ManyErrors(); }},
    {"status-code", Takes::kText, "reports an error whose code is written like this (+6)",
     [](const Parameters& p) { return StatusCode(p.TextOr("+6")); }},
    {"cut-before-last-chunk", Takes::kNothing, "closes before the last chunk of an answer",
     [](const Parameters&) { return CutBeforeLastChunk(); }},
    {"http10-401", Takes::kNothing, "refuses credentials in HTTP/1.0, without a length",
     [](const Parameters&) { return Raw(kOldRefusal); }},
    {"ticket-flood", Takes::kNothing, "sends TLS session tickets without end after an answer",
     [](const Parameters&) { return TicketFlood(); }},
    {"key-update-flood", Takes::kNothing, "sends TLS key updates without end after an answer",
     [](const Parameters&) { return KeyUpdateFlood(); }},
};

[[noreturn]] void Fail(std::string_view text, const std::string& remedy) {
    throw std::invalid_argument("unknown fault \"" + std::string(text) + "\": " + remedy);
}

const Entry& Find(std::string_view name, std::string_view text) {
    std::string known;
    for (const Entry& entry : kEntries) {
        if (name == entry.name) {
            return entry;
        }
        known += (known.empty() ? "" : ", ") + std::string(entry.name);
    }
    Fail(text, "write one of " + known);
}

/// Enough for every byte count and pause, and far from where adding to it would overflow.
constexpr std::int64_t kLargestNumber = 1'000'000'000'000;

/// Takes a number off the front.
std::optional<std::int64_t> TakeNumber(std::string_view& text) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || number > kLargestNumber || number < -kLargestNumber) {
        return std::nullopt;
    }
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

Parameters Read(const Entry& entry, std::string_view given, std::string_view text) {
    Parameters parameters;
    if (entry.takes == Takes::kNumber || entry.takes == Takes::kBoth) {
        parameters.number = TakeNumber(given);
        if (!parameters.number || (!given.empty() && given.front() != ',')) {
            Fail(text, std::string("write ") + entry.name + FormOf(entry.takes));
        }
        given.remove_prefix(given.empty() ? 0 : 1);
    }
    if (!given.empty() && (entry.takes == Takes::kNothing || entry.takes == Takes::kNumber)) {
        Fail(text, std::string("write ") + entry.name + " without a text");
    }
    parameters.text = given;
    return parameters;
}

}  // namespace

Fault ByName(std::string_view text) {
    const std::string_view name = text.substr(0, text.find_first_of("@="));
    const Entry& entry = Find(name, text);
    const auto equals = text.find('=');
    Fault fault =
        entry.make(equals == std::string_view::npos ? Parameters()
                                                    : Read(entry, text.substr(equals + 1), text));
    const std::string_view before_value = text.substr(0, equals);
    if (before_value != name) {
        const std::string remedy = ReadLimits(before_value.substr(name.size() + 1), fault);
        if (!remedy.empty()) {
            Fail(text, remedy);
        }
    }
    return fault;
}

std::vector<Name> Names() {
    std::vector<Name> names;
    for (const Entry& entry : kEntries) {
        names.push_back({entry.name, FormOf(entry.takes), entry.meaning});
    }
    return names;
}

}  // namespace simhost::Faults
