// An HTTP answer before it is bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace simhost {

struct Answer {
    using Headers = std::vector<std::pair<std::string, std::string>>;

    int status = 200;
    std::string reason = "OK";
    Headers headers;  ///< without those about the body's length
    std::string body;
    bool chunked = false;
    std::size_t chunk_size = 0;  ///< 0: one chunk
    Headers trailers;            ///< of a chunked answer
    bool close = false;          ///< the connection ends after this answer

    // Only faults set these.
    std::int64_t length_surplus = 0;  ///< announced beyond the body's length
    /// Sent `repetitions` more times at `repeat_at` of the body.
    std::string repeated;
    std::size_t repeat_at = 0;
    std::size_t repetitions = 0;

    /// Replaces the header, or removes it when the value is empty.
    void SetHeader(std::string_view name, std::string_view value);
};

/// An answer without a body.
Answer EmptyAnswer(int status, std::string reason, Answer::Headers headers = {});

/// Takes the next bytes of an answer; gives false when no more are wanted.
using ByteSink = std::function<bool(std::string_view)>;

/// Hands the answer as HTTP to the sink: in one piece, but for what is repeated.
void WriteAnswer(const Answer& answer, const ByteSink& sink);

}  // namespace simhost
