#include "simhost/fault_acts.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include "simhost/responder.h"

namespace simhost {

namespace {

using Kind = Fault::Kind;

void CloseAtOnce(const Fault&, Stream& stream) { stream.Close(); }

void StallAtOnce(const Fault&, Stream& stream) { stream.AwaitPeersEnd(); }

void GreetAtOnce(const Fault& fault, Stream& stream) {
    stream.Write(fault.text);
    stream.AwaitPeersEnd();
}

void ChangeLength(const Fault& fault, const NumberedRequest&, Answer& answer) {
    answer.chunked = false;
    answer.SetHeader("Trailer", "");
    answer.length_surplus = fault.number;
}

void ReplaceByErrorElement(const Fault& fault, const NumberedRequest& request, Answer& answer) {
    answer = ErrorElementAnswer(request.request, static_cast<unsigned>(fault.number), fault.text);
}

void BreakOffWithError(const Fault& fault, const NumberedRequest&, Answer& answer) {
    answer.body.resize(answer.body.size() / 2);
    AddErrorTrailers(static_cast<unsigned>(fault.number), fault.text, answer);
}

void ReplaceStatus(const Fault& fault, const NumberedRequest&, Answer& answer) {
    answer = EmptyAnswer(static_cast<int>(fault.number), fault.text);
    answer.SetHeader("CIMError", fault.cim_error);
}

void ReplaceContentType(const Fault& fault, const NumberedRequest&, Answer& answer) {
    answer.SetHeader("Content-Type", fault.text);
}

void ReplaceOperation(const Fault& fault, const NumberedRequest&, Answer& answer) {
    answer.SetHeader("CIMOperation", fault.text);
}

void ReplaceMessageId(const Fault& fault, const NumberedRequest&, Answer& answer) {
    const std::string before = "<MESSAGE ID=\"";
    const auto begin = answer.body.find(before);
    if (begin != std::string::npos) {
        const auto id_begin = begin + before.size();
        answer.body.replace(id_begin, answer.body.find('"', id_begin) - id_begin, fault.text);
    }
}

/// Repeats the returned elements; without any, blank lines.
void Enlarge(const Fault& fault, const NumberedRequest&, Answer& answer) {
    const auto size = static_cast<std::size_t>(fault.number);
    constexpr std::size_t kPiece = 65536;
    const std::string begin = "<IRETURNVALUE>\n";
    const auto at = answer.body.find(begin);
    if (at != std::string::npos) {
        const auto elements = at + begin.size();
        const auto end = answer.body.rfind("</IRETURNVALUE>");
        answer.repeated = answer.body.substr(elements, end - elements);
        answer.repeat_at = end;
    } else {
        answer.repeated.assign(kPiece, '\n');
        answer.repeat_at = std::min(answer.body.rfind("</IMETHODRESPONSE>"), answer.body.size());
    }
    const std::string once = answer.repeated;
    while (answer.repeated.size() < kPiece && answer.repeated.size() < size) {
        answer.repeated += once;
    }
    answer.repetitions = size / answer.repeated.size() + 1;
}

void EndConnection(const Fault& fault, const NumberedRequest& request, Answer& answer) {
    const auto every = static_cast<std::size_t>(std::max<std::int64_t>(1, fault.number));
    if (request.number % every == 0) {
        answer.close = true;
        answer.SetHeader("Connection", fault.abrupt ? "" : "close");
    }
}

constexpr unsigned kFailed = 1;

void ReplaceByHugeError(const Fault& fault, const NumberedRequest& request, Answer& answer) {
    constexpr std::string_view kWords = "provider died, ";
    constexpr std::size_t kPiece = 4096;
    answer = ErrorElementAnswer(request.request, kFailed, "");
    answer.repeat_at =
        answer.body.find("DESCRIPTION=\"") + std::string_view("DESCRIPTION=\"").size();
    for (std::size_t i = 0; i < kPiece; ++i) {
        answer.repeated += kWords;
    }
    answer.repetitions = static_cast<std::size_t>(fault.number) / answer.repeated.size() + 1;
}

/// Quotation marks stay as they are.
std::string WithoutMarkup(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '<') {
            escaped += "&lt;";
        } else if (c == '&') {
            escaped += "&amp;";
        } else {
            escaped += c;
        }
    }
    return escaped;
}

std::string EmbeddingProperty(const std::string& instance) {
    return "<PROPERTY NAME=\"Nested\" TYPE=\"string\" EmbeddedObject=\"instance\"><VALUE>" +
           WithoutMarkup(instance) + "</VALUE></PROPERTY>\n";
}

void NestQuotes(const Fault& fault, const NumberedRequest&, Answer& answer) {
    constexpr int kLevels = 16;
    const auto end = answer.body.find("</INSTANCE>");
    if (end == std::string::npos) {
        return;
    }
    std::string property = "<PROPERTY NAME=\"Text\" TYPE=\"string\"><VALUE>" +
                           std::string(static_cast<std::size_t>(fault.number), '"') +
                           "</VALUE></PROPERTY>";
    for (int level = 0; level < kLevels; ++level) {
        std::string instance = "<INSTANCE CLASSNAME=\"Nested\">";
        instance.append(property).append("</INSTANCE>");
        property = EmbeddingProperty(instance);
    }
    answer.body.insert(end, property);
}

void EchoInError(const Fault&, const NumberedRequest& request, Answer& answer) {
    answer = ErrorElementAnswer(request.request, kFailed,
                                "you said: " + std::string(request.authorization));
}

void Widen(const Fault& fault, const NumberedRequest&, Answer& answer) {
    constexpr std::string_view kText = " TYPE=\"string\">";
    constexpr std::string_view kEnd = "</VALUE>";
    std::string wide;
    std::string_view rest = answer.body;
    for (std::size_t text = 0; (text = rest.find(kText)) != std::string_view::npos;) {
        const std::size_t from = text + kText.size();
        const std::size_t end = rest.find(kEnd, from);
        const std::size_t property_end = rest.find("</PROPERTY", from);
        const bool has_value = end < property_end;
        wide += rest.substr(0, has_value ? end : from);
        if (has_value) {
            wide.append(static_cast<std::size_t>(fault.number), 'w');
        }
        rest.remove_prefix(has_value ? end : from);
    }
    answer.body = wide.append(rest);
}

void ReplaceByNumberedError(const Fault&, const NumberedRequest& request, Answer& answer) {
    answer = ErrorElementAnswer(request.request, kFailed,
                                "failure " + std::to_string(request.number) + " of connection " +
                                    std::to_string(request.connection));
}

void BreakOffWithOddCode(const Fault& fault, const NumberedRequest& request, Answer& answer) {
    BreakOffWithError(fault, request, answer);
    answer.trailers.front().second = fault.text;
}

bool SendAllButTheLastChunk(const Fault&, const Answer& answer, Stream& stream) {
    constexpr std::string_view kLastChunk = "\r\n0\r\n";
    std::string before;
    WriteAnswer(answer, [&](std::string_view bytes) {
        stream.Write(before);
        before = bytes;
        return true;
    });
    const auto last_chunk = answer.chunked ? before.rfind(kLastChunk) : before.size() - 1;
    stream.Write(std::string_view(before).substr(0, last_chunk));
    stream.Close();
    return false;
}

template <bool (Stream::*send)()>
bool SendAndFlood(const Fault&, const Answer& answer, Stream& stream) {
    WriteAnswer(answer, [&](std::string_view bytes) {
        stream.Write(bytes);
        return true;
    });
    while ((stream.*send)()) {
    }
    stream.AwaitPeersEnd();
    return false;
}

bool CloseInstead(const Fault&, const Answer&, Stream& stream) {
    stream.Close();
    return false;
}

bool ResetInstead(const Fault&, const Answer&, Stream& stream) {
    stream.Reset();
    return false;
}

bool StallInstead(const Fault&, const Answer&, Stream& stream) {
    stream.AwaitPeersEnd();
    return false;
}

bool SendTextInstead(const Fault& fault, const Answer&, Stream& stream) {
    stream.Write(fault.text);
    stream.CloseProperly();
    return false;
}

bool SendTruncated(const Fault& fault, const Answer& answer, Stream& stream) {
    auto left = static_cast<std::size_t>(fault.number);
    WriteAnswer(answer, [&](std::string_view bytes) {
        const std::string_view piece = bytes.substr(0, left);
        stream.Write(piece);
        left -= piece.size();
        return left > 0;
    });
    fault.abrupt ? stream.Reset() : stream.Close();
    return false;
}

bool SendSlowly(const Fault& fault, const Answer& answer, Stream& stream) {
    const auto size = static_cast<std::size_t>(std::max<std::int64_t>(1, fault.number));
    WriteAnswer(answer, [&](std::string_view bytes) {
        for (; !bytes.empty(); bytes.remove_prefix(std::min(size, bytes.size()))) {
            stream.Write(bytes.substr(0, size));
            stream.Pause(fault.pause);
        }
        return true;
    });
    return true;
}

}  // namespace

// Without a default, so that the compiler misses a kind that nothing is done about.
Act ActOf(Kind kind) {
    switch (kind) {
        case Kind::kCloseOnConnect:
            return &CloseAtOnce;
        case Kind::kStallOnConnect:
            return &StallAtOnce;
        case Kind::kRawOnConnect:
            return &GreetAtOnce;
        case Kind::kWrongLength:
            return &ChangeLength;
        case Kind::kCimErrorElement:
            return &ReplaceByErrorElement;
        case Kind::kCimErrorTrailer:
            return &BreakOffWithError;
        case Kind::kHttpStatus:
            return &ReplaceStatus;
        case Kind::kContentType:
            return &ReplaceContentType;
        case Kind::kOperationHeader:
            return &ReplaceOperation;
        case Kind::kMessageId:
            return &ReplaceMessageId;
        case Kind::kHugeReply:
            return &Enlarge;
        case Kind::kCloseEvery:
            return &EndConnection;
        case Kind::kHugeError:
            return &ReplaceByHugeError;
        case Kind::kNestedQuotes:
            return &NestQuotes;
        case Kind::kEchoAuthorization:
            return &EchoInError;
        case Kind::kWideCells:
            return &Widen;
        case Kind::kManyErrors:
            return &ReplaceByNumberedError;
        case Kind::kStatusCode:
            return &BreakOffWithOddCode;
        case Kind::kCutBeforeLastChunk:
            return &SendAllButTheLastChunk;
        case Kind::kTicketFlood:
            return &SendAndFlood<&Stream::SendTicket>;
        case Kind::kKeyUpdateFlood:
            return &SendAndFlood<&Stream::SendKeyUpdate>;
        case Kind::kClose:
            return &CloseInstead;
        case Kind::kReset:
            return &ResetInstead;
        case Kind::kStall:
            return &StallInstead;
        case Kind::kRaw:
            return &SendTextInstead;
        case Kind::kTruncate:
            return &SendTruncated;
        case Kind::kSlowDrip:
            return &SendSlowly;
    }
    throw std::logic_error("a fault of no kind");
}

bool ActsOnConnect(Kind kind) { return std::holds_alternative<ActOnConnect>(ActOf(kind)); }

void ApplyOnConnect(const Fault& fault, Stream& stream) {
    std::get<ActOnConnect>(ActOf(fault.kind))(fault, stream);
}

void ApplyToAnswer(const Fault& fault, const NumberedRequest& request, Answer& answer) {
    const Act act = ActOf(fault.kind);
    if (const auto* const change = std::get_if<ActOnAnswer>(&act)) {
        (*change)(fault, request, answer);
    }
}

bool ApplyToSending(const Fault& fault, const Answer& answer, Stream& stream) {
    const Act act = ActOf(fault.kind);
    if (const auto* const send = std::get_if<ActOnSending>(&act)) {
        return (*send)(fault, answer, stream);
    }
    WriteAnswer(answer, [&](std::string_view bytes) {
        stream.Write(bytes);
        return true;
    });
    return true;
}

}  // namespace simhost
