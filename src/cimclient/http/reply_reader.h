// Reads one reply from a stream of bytes: head, body by length, by chunks or up to the end, and
// trailers.
//
// Memory grows with the bytes that have arrived, never with what the head announces, up to the
// limits in reply_limits.h and that of the reply. What is no HTTP throws HttpError; framing that
// cannot be followed throws FramingError.
#pragma once

#include <functional>
#include <string_view>

#include "http/reply.h"

namespace cimclient {

class ReplyReader {
public:
    /// Gives the next bytes, and an empty view at the end.
    using Source = std::function<std::string_view()>;

    /// A reply of more than `max_bytes`, head and body, is refused.
    ReplyReader(Source source, std::size_t max_bytes)
        : source_(std::move(source)), max_bytes_(max_bytes) {}

    /// Reads status line and headers, past interim (1xx) replies.
    HttpReply ReadHead();
    /// Finds out how the body is framed.
    void BeginBody(const HttpReply& reply);
    /// The next bytes of the body, valid until the next call; empty at its end, when the reply has
    /// its trailers.
    std::string_view NextPart(HttpReply& reply);

    /// Whether anything at all has arrived.
    bool HasBegun() const { return has_begun_; }

private:
    bool More();
    bool ReadLine(std::string& line, std::size_t& budget);
    bool ReadFields(HeaderFields& fields, std::size_t& budget);
    void ReadStatusLine(HttpReply& reply, std::size_t& budget);
    void BeginChunk(HttpReply& reply);
    std::size_t ChunkSize(std::string_view line) const;
    [[noreturn]] void FailTooLarge() const;

    enum class Framing { kNone, kLength, kChunks, kToEnd };

    Source source_;
    std::size_t max_bytes_;
    std::string_view unread_;
    std::size_t total_ = 0;
    bool has_begun_ = false;
    bool at_end_ = false;
    Framing framing_ = Framing::kNone;
    std::size_t remaining_ = 0;  ///< of the body, or of the chunk
    bool in_chunk_ = false;      ///< a chunk has been read, whose line end is still to come
};

}  // namespace cimclient
