#include "simhost/answer.h"

#include <algorithm>
#include <cstdio>

#include "simhost/text.h"

namespace simhost {

namespace {

void AppendHeader(std::string_view name, std::string_view value, std::string& text) {
    text.append(name).append(": ").append(value).append("\r\n");
}

std::string Head(const Answer& answer) {
    std::string head = "HTTP/1.1 " + std::to_string(answer.status) + ' ' + answer.reason + "\r\n";
    std::size_t written = 0;
    const auto write_length = [&] {
        if (answer.chunked) {
            AppendHeader("transfer-encoding", "chunked", head);
            return;
        }
        const auto length = static_cast<std::int64_t>(answer.body.size() +
                                                      answer.repeated.size() * answer.repetitions);
        char digits[24];
        std::snprintf(
            digits, sizeof digits, "%010jd",
            static_cast<std::intmax_t>(std::max<std::int64_t>(0, length + answer.length_surplus)));
        AppendHeader("content-length", digits, head);
    };
    // The length stands after the content type, as stock servers put it.
    for (const auto& [name, value] : answer.headers) {
        AppendHeader(name, value, head);
        if (++written == 1) {
            write_length();
        }
    }
    if (written == 0) {
        write_length();
    }
    return head;
}

std::string Chunk(std::string_view data) {
    char size[24];
    std::snprintf(size, sizeof size, "%zx\r\n", data.size());
    return size + std::string(data) + "\r\n";
}

std::string Chunks(std::string_view data, std::size_t chunk_size) {
    std::string chunks;
    while (!data.empty()) {
        const std::string_view piece = data.substr(0, chunk_size == 0 ? data.size() : chunk_size);
        chunks += Chunk(piece);
        data.remove_prefix(piece.size());
    }
    return chunks;
}

std::string LastChunk(const Answer& answer) {
    std::string last = "0\r\n";
    for (const auto& [name, value] : answer.trailers) {
        AppendHeader(name, value, last);
    }
    return last + "\r\n";
}

}  // namespace

void Answer::SetHeader(std::string_view name, std::string_view value) {
    const auto found = std::find_if(headers.begin(), headers.end(), [&](const auto& header) {
        return EqualIgnoringCase(header.first, name);
    });
    if (value.empty()) {
        if (found != headers.end()) {
            headers.erase(found);
        }
    } else if (found != headers.end()) {
        found->second = value;
    } else {
        headers.emplace_back(name, value);
    }
}

Answer EmptyAnswer(int status, std::string reason, Answer::Headers headers) {
    Answer answer;
    answer.status = status;
    answer.reason = std::move(reason);
    answer.headers = std::move(headers);
    return answer;
}

void WriteAnswer(const Answer& answer, const ByteSink& sink) {
    const auto framed = [&](std::string_view data) {
        return answer.chunked ? Chunks(data, answer.chunk_size) : std::string(data);
    };
    const std::string_view body = answer.body;
    const std::string end = answer.chunked ? LastChunk(answer) : "";
    const std::string head = Head(answer) + "\r\n";
    if (answer.repetitions == 0) {
        sink(head + framed(body) + end);
        return;
    }
    bool wanted = sink(head + framed(body.substr(0, answer.repeat_at)));
    const std::string repeated = framed(answer.repeated);
    for (std::size_t i = 0; i < answer.repetitions && wanted; ++i) {
        wanted = sink(repeated);
    }
    if (wanted) {
        sink(framed(body.substr(answer.repeat_at)) + end);
    }
}

}  // namespace simhost
