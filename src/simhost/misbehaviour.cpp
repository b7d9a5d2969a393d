#include "simhost/misbehaviour.h"

#include <utility>

namespace simhost::Misbehaviours {

namespace {

using Kind = Misbehaviour::Kind;

Misbehaviour Make(Kind kind, std::int64_t number = 0, std::string text = {}) {
    Misbehaviour misbehaviour;
    misbehaviour.kind = kind;
    misbehaviour.number = number;
    misbehaviour.text = std::move(text);
    return misbehaviour;
}

Misbehaviour Abruptly(bool abrupt, Misbehaviour misbehaviour) {
    misbehaviour.abrupt = abrupt;
    return misbehaviour;
}

}  // namespace

Misbehaviour Close() { return Make(Kind::kClose); }

Misbehaviour Reset() { return Make(Kind::kReset); }

Misbehaviour Stall() { return Make(Kind::kStall); }

Misbehaviour Raw(std::string bytes) { return Make(Kind::kRaw, 0, std::move(bytes)); }

Misbehaviour Truncate(std::size_t bytes, bool reset) {
    return Abruptly(reset, Make(Kind::kTruncate, static_cast<std::int64_t>(bytes)));
}

Misbehaviour SlowDrip(std::size_t bytes, std::chrono::milliseconds pause) {
    Misbehaviour misbehaviour = Make(Kind::kSlowDrip, static_cast<std::int64_t>(bytes));
    misbehaviour.pause = pause;
    return misbehaviour;
}

Misbehaviour CloseOnConnect() { return Make(Kind::kCloseOnConnect); }

Misbehaviour StallOnConnect() { return Make(Kind::kStallOnConnect); }

Misbehaviour RawOnConnect(std::string bytes) {
    return Make(Kind::kRawOnConnect, 0, std::move(bytes));
}

Misbehaviour WrongLength(std::int64_t surplus) { return Make(Kind::kWrongLength, surplus); }

Misbehaviour CimErrorElement(unsigned code, std::string description) {
    return Make(Kind::kCimErrorElement, code, std::move(description));
}

Misbehaviour CimErrorTrailer(unsigned code, std::string description) {
    return Make(Kind::kCimErrorTrailer, code, std::move(description));
}

Misbehaviour HttpStatus(int status, std::string reason, std::string cim_error) {
    Misbehaviour misbehaviour = Make(Kind::kHttpStatus, status, std::move(reason));
    misbehaviour.cim_error = std::move(cim_error);
    return misbehaviour;
}

Misbehaviour ContentType(std::string type) { return Make(Kind::kContentType, 0, std::move(type)); }

Misbehaviour OperationHeader(std::string operation) {
    return Make(Kind::kOperationHeader, 0, std::move(operation));
}

Misbehaviour MessageId(std::string id) { return Make(Kind::kMessageId, 0, std::move(id)); }

Misbehaviour HugeReply(std::size_t bytes) {
    return Make(Kind::kHugeReply, static_cast<std::int64_t>(bytes));
}

Misbehaviour CloseEvery(std::size_t requests, bool announced) {
    return Abruptly(!announced, Make(Kind::kCloseEvery, static_cast<std::int64_t>(requests)));
}

}  // namespace simhost::Misbehaviours
