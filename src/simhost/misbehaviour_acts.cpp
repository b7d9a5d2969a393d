#include "simhost/misbehaviour_acts.h"

#include <algorithm>

#include "simhost/responder.h"

namespace simhost {

namespace {

using Kind = Misbehaviour::Kind;

void BreakOffWithError(const Misbehaviour& misbehaviour, Answer& answer) {
    answer.body.resize(answer.body.size() / 2);
    AddErrorTrailers(static_cast<unsigned>(misbehaviour.number), misbehaviour.text, answer);
}

void ReplaceStatus(const Misbehaviour& misbehaviour, Answer& answer) {
    answer = EmptyAnswer(static_cast<int>(misbehaviour.number), misbehaviour.text);
    answer.SetHeader("CIMError", misbehaviour.cim_error);
}

void ReplaceMessageId(const std::string& id, Answer& answer) {
    const std::string before = "<MESSAGE ID=\"";
    const auto begin = answer.body.find(before);
    if (begin != std::string::npos) {
        const auto id_begin = begin + before.size();
        answer.body.replace(id_begin, answer.body.find('"', id_begin) - id_begin, id);
    }
}

/// Repeats the returned elements; without any, blank lines.
void Enlarge(std::size_t size, Answer& answer) {
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

void EndConnection(const Misbehaviour& misbehaviour, std::size_t request_number, Answer& answer) {
    const auto every = static_cast<std::size_t>(std::max<std::int64_t>(1, misbehaviour.number));
    if (request_number % every == 0) {
        answer.close = true;
        answer.SetHeader("Connection", misbehaviour.abrupt ? "" : "close");
    }
}

bool SendTruncated(const Misbehaviour& misbehaviour, const Answer& answer, Stream& stream) {
    auto left = static_cast<std::size_t>(misbehaviour.number);
    WriteAnswer(answer, [&](std::string_view bytes) {
        const std::string_view piece = bytes.substr(0, left);
        stream.Write(piece);
        left -= piece.size();
        return left > 0;
    });
    misbehaviour.abrupt ? stream.Reset() : stream.Close();
    return false;
}

void SendSlowly(const Misbehaviour& misbehaviour, const Answer& answer, Stream& stream) {
    const auto size = static_cast<std::size_t>(std::max<std::int64_t>(1, misbehaviour.number));
    WriteAnswer(answer, [&](std::string_view bytes) {
        for (; !bytes.empty(); bytes.remove_prefix(std::min(size, bytes.size()))) {
            stream.Write(bytes.substr(0, size));
            stream.Pause(misbehaviour.pause);
        }
        return true;
    });
}

}  // namespace

void MisbehaveOnConnect(const Misbehaviour& misbehaviour, Stream& stream) {
    if (misbehaviour.kind != Kind::kCloseOnConnect) {
        if (misbehaviour.kind == Kind::kRawOnConnect) {
            stream.Write(misbehaviour.text);
        }
        stream.AwaitPeersEnd();
    }
    stream.Close();
}

void Spoil(const Misbehaviour& misbehaviour, const CimRequest& request, std::size_t request_number,
           Answer& answer) {
    switch (misbehaviour.kind) {
        case Kind::kWrongLength:
            answer.chunked = false;
            answer.SetHeader("Trailer", "");
            answer.length_surplus = misbehaviour.number;
            break;
        case Kind::kCimErrorElement:
            answer = ErrorElementAnswer(request, static_cast<unsigned>(misbehaviour.number),
                                        misbehaviour.text);
            break;
        case Kind::kCimErrorTrailer:
            BreakOffWithError(misbehaviour, answer);
            break;
        case Kind::kHttpStatus:
            ReplaceStatus(misbehaviour, answer);
            break;
        case Kind::kContentType:
            answer.SetHeader("Content-Type", misbehaviour.text);
            break;
        case Kind::kOperationHeader:
            answer.SetHeader("CIMOperation", misbehaviour.text);
            break;
        case Kind::kMessageId:
            ReplaceMessageId(misbehaviour.text, answer);
            break;
        case Kind::kHugeReply:
            Enlarge(static_cast<std::size_t>(misbehaviour.number), answer);
            break;
        case Kind::kCloseEvery:
            EndConnection(misbehaviour, request_number, answer);
            break;
        default:
            break;
    }
}

bool SendMisbehaving(const Misbehaviour& misbehaviour, const Answer& answer, Stream& stream) {
    switch (misbehaviour.kind) {
        case Kind::kClose:
            stream.Close();
            return false;
        case Kind::kReset:
            stream.Reset();
            return false;
        case Kind::kStall:
            stream.AwaitPeersEnd();
            return false;
        case Kind::kRaw:
            stream.Write(misbehaviour.text);
            stream.CloseProperly();
            return false;
        case Kind::kTruncate:
            return SendTruncated(misbehaviour, answer, stream);
        case Kind::kSlowDrip:
            SendSlowly(misbehaviour, answer, stream);
            return true;
        default:
            WriteAnswer(answer, [&](std::string_view bytes) {
                stream.Write(bytes);
                return true;
            });
            return true;
    }
}

}  // namespace simhost
