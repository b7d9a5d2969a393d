#include "http/reply_reader.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>

#include "common/text/ascii.h"
#include "common/text/number.h"
#include "common/text/utf8.h"
#include "reply_errors.h"
#include "reply_limits.h"

namespace cimclient {

namespace {

[[noreturn]] void FailMalformed() {
    throw HttpError{"Malformed HTTP response message.", Zentar::FailureKind::kNotCimServer};
}

[[noreturn]] void FailHeadTooLarge() { throw HttpError{"The reply's head is too large."}; }

/// Digits only, below 2^63.
std::optional<std::size_t> LengthOf(std::string_view text) {
    const auto length = Zentar::NumberOf<std::size_t>(text);
    return length && *length <= std::numeric_limits<std::size_t>::max() / 2 ? length : std::nullopt;
}

/// The announced length, if there is one; several must agree.
std::optional<std::size_t> ContentLength(const HeaderFields& headers) {
    std::optional<std::size_t> length;
    for (const std::string& value : headers.All("Content-Length")) {
        const auto one = LengthOf(value);
        if (!one || (length && *length != *one)) {
            throw FramingError{{"Invalid Content-Length header detected"}, 400, "Bad Request"};
        }
        length = one;
    }
    return length;
}

}  // namespace

void ReplyReader::FailTooLarge() const {
    throw HttpError{"The reply is larger than " + std::to_string(max_bytes_) + " bytes."};
}

bool ReplyReader::More() {
    if (unread_.empty() && !at_end_) {
        unread_ = source_();
        at_end_ = unread_.empty();
        has_begun_ |= !at_end_;
        total_ += unread_.size();
        if (total_ > max_bytes_) {
            FailTooLarge();
        }
    }
    return !unread_.empty();
}

/// A line without its end. False when the stream ended before the line did.
bool ReplyReader::ReadLine(std::string& line, std::size_t& budget) {
    line.clear();
    while (More()) {
        const std::size_t end = unread_.find('\n');
        const std::string_view part = unread_.substr(0, end);
        if (part.size() >= budget) {
            FailHeadTooLarge();
        }
        budget -= part.size() + 1;
        line += part;
        unread_.remove_prefix(std::min(part.size() + 1, unread_.size()));
        if (end != std::string_view::npos) {
            if (!line.empty() && line.back() == '\r') {
                line.pop_back();
            }
            return true;
        }
    }
    return false;
}

/// False when the stream ended before the blank line after the fields.
bool ReplyReader::ReadFields(HeaderFields& fields, std::size_t& budget) {
    std::string line;
    for (std::size_t lines = 0; ReadLine(line, budget); ++lines) {
        if (line.empty()) {
            return true;
        }
        if (lines == kMaxHeadLines) {
            FailHeadTooLarge();
        }
        fields.Add(Zentar::RepairedUtf8(line));
    }
    return false;
}

void ReplyReader::ReadStatusLine(HttpReply& reply, std::size_t& budget) {
    std::string line;
    const bool complete = ReadLine(line, budget);
    if (!has_begun_) {
        throw HttpError{"Connection closed by CIM Server."};
    }
    // "HTTP/1.1 200 OK": the version, a three-digit status, and a reason after a blank.
    constexpr std::size_t kStatusAt = 9;
    const std::string_view text = line;
    if (!complete || !text.starts_with("HTTP/") || text.size() < kStatusAt + 4 ||
        !Zentar::IsDigit(text[5]) || text[6] != '.' || !Zentar::IsDigit(text[7]) ||
        text[8] != ' ' ||
        !std::all_of(text.begin() + kStatusAt, text.begin() + kStatusAt + 3, Zentar::IsDigit) ||
        text[kStatusAt + 3] != ' ') {
        FailMalformed();
    }
    reply.is_http_1_0 = text.substr(0, kStatusAt) == "HTTP/1.0 ";
    std::from_chars(text.data() + kStatusAt, text.data() + kStatusAt + 3, reply.status);
    reply.reason = Zentar::RepairedUtf8(text.substr(kStatusAt + 4));
}

HttpReply ReplyReader::ReadHead() {
    std::size_t budget = kMaxHeadBytes;
    while (true) {
        HttpReply reply;
        ReadStatusLine(reply, budget);
        ReadFields(reply.headers, budget);
        if (reply.status >= 200 || reply.status < 100) {
            const std::string connection = reply.headers.ValueOr("Connection", "");
            reply.keeps_alive = reply.is_http_1_0 ? Zentar::EqualNoCase(connection, "keep-alive")
                                                  : !Zentar::EqualNoCase(connection, "close");
            return reply;
        }
    }
}

void ReplyReader::BeginBody(const HttpReply& reply) {
    const std::string* encoding = reply.headers.Find("Transfer-Encoding");
    if (encoding != nullptr && !Zentar::EqualNoCase(*encoding, "chunked")) {
        throw FramingError{{"unimplemented transfer-encoding value"}, 501, "Not Implemented"};
    }
    if (encoding != nullptr) {
        framing_ = Framing::kChunks;
    } else if (const auto length = ContentLength(reply.headers)) {
        if (*length > max_bytes_) {
            FailTooLarge();
        }
        framing_ = Framing::kLength;
        remaining_ = *length;
    } else if (reply.status == 200) {
        framing_ = Framing::kToEnd;
        remaining_ = max_bytes_;
    }
}

std::string_view ReplyReader::NextPart(HttpReply& reply) {
    if (remaining_ == 0 && framing_ == Framing::kChunks) {
        BeginChunk(reply);
    }
    std::string_view part;
    if (remaining_ > 0 && More()) {
        part = unread_.substr(0, remaining_);
        unread_.remove_prefix(part.size());
        remaining_ -= part.size();
    } else if (remaining_ > 0 && framing_ == Framing::kChunks) {
        reply.has_last_chunk = false;
    }
    reply.keeps_alive = reply.keeps_alive && !at_end_;
    return part;
}

std::size_t ReplyReader::ChunkSize(std::string_view line) const {
    std::size_t size = 0;
    const auto result = std::from_chars(line.data(), line.data() + line.size(), size, 16);
    const std::string_view rest = line.substr(static_cast<std::size_t>(result.ptr - line.data()));
    const std::size_t extension = rest.find_first_not_of(" \t");
    const bool ended = extension == std::string_view::npos || rest[extension] == ';';
    if (result.ec == std::errc::result_out_of_range || size > max_bytes_) {
        FailTooLarge();
    }
    if (result.ec != std::errc() || !ended) {
        throw FramingError{{"missing chunk extension"}, 400, "Bad Request"};
    }
    return size;
}

/// A stream that ends early ends the body too, without the last chunk.
void ReplyReader::BeginChunk(HttpReply& reply) {
    std::string line;
    std::size_t budget = kMaxHeadBytes;
    const bool goes_on = !in_chunk_ || ReadLine(line, budget);  // the line end after a chunk
    if (!goes_on || !ReadLine(line, budget)) {
        framing_ = Framing::kNone;
        reply.has_last_chunk = false;
        return;
    }
    in_chunk_ = true;
    remaining_ = ChunkSize(line);
    if (remaining_ == 0) {
        framing_ = Framing::kNone;
        reply.has_last_chunk = ReadFields(reply.trailers, budget);
    }
}

}  // namespace cimclient
