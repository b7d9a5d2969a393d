#include "simhost/fault.h"

#include <utility>

namespace simhost::Faults {

namespace {

using Kind = Fault::Kind;

Fault Make(Kind kind, std::int64_t number = 0, std::string text = {}) {
    Fault fault;
    fault.kind = kind;
    fault.number = number;
    fault.text = std::move(text);
    return fault;
}

Fault Abruptly(bool abrupt, Fault fault) {
    fault.abrupt = abrupt;
    return fault;
}

}  // namespace

Fault Close() { return Make(Kind::kClose); }

Fault Reset() { return Make(Kind::kReset); }

Fault Stall() { return Make(Kind::kStall); }

Fault Raw(std::string bytes) { return Make(Kind::kRaw, 0, std::move(bytes)); }

Fault Truncate(std::size_t bytes, bool reset) {
    return Abruptly(reset, Make(Kind::kTruncate, static_cast<std::int64_t>(bytes)));
}

Fault SlowDrip(std::size_t bytes, std::chrono::milliseconds pause) {
    Fault fault = Make(Kind::kSlowDrip, static_cast<std::int64_t>(bytes));
    fault.pause = pause;
    return fault;
}

Fault CloseOnConnect() { return Make(Kind::kCloseOnConnect); }

Fault StallOnConnect() { return Make(Kind::kStallOnConnect); }

Fault RawOnConnect(std::string bytes) { return Make(Kind::kRawOnConnect, 0, std::move(bytes)); }

Fault WrongLength(std::int64_t surplus) { return Make(Kind::kWrongLength, surplus); }

Fault CimErrorElement(unsigned code, std::string description) {
    return Make(Kind::kCimErrorElement, code, std::move(description));
}

Fault CimErrorTrailer(unsigned code, std::string description) {
    return Make(Kind::kCimErrorTrailer, code, std::move(description));
}

Fault HttpStatus(int status, std::string reason, std::string cim_error) {
    Fault fault = Make(Kind::kHttpStatus, status, std::move(reason));
    fault.cim_error = std::move(cim_error);
    return fault;
}

Fault ContentType(std::string type) { return Make(Kind::kContentType, 0, std::move(type)); }

Fault OperationHeader(std::string operation) {
    return Make(Kind::kOperationHeader, 0, std::move(operation));
}

Fault MessageId(std::string id) { return Make(Kind::kMessageId, 0, std::move(id)); }

Fault HugeReply(std::size_t bytes) {
    return Make(Kind::kHugeReply, static_cast<std::int64_t>(bytes));
}

Fault CloseEvery(std::size_t requests, bool announced) {
    return Abruptly(!announced, Make(Kind::kCloseEvery, static_cast<std::int64_t>(requests)));
}

Fault HugeError(std::size_t bytes) {
    return Make(Kind::kHugeError, static_cast<std::int64_t>(bytes));
}

Fault NestedQuotes(std::size_t marks) {
    return Make(Kind::kNestedQuotes, static_cast<std::int64_t>(marks));
}

Fault EchoAuthorization() { return Make(Kind::kEchoAuthorization); }

Fault WideCells(std::size_t characters) {
    return Make(Kind::kWideCells, static_cast<std::int64_t>(characters));
}

Fault ManyErrors() { return Make(Kind::kManyErrors); }

Fault StatusCode(std::string code) { return Make(Kind::kStatusCode, 0, std::move(code)); }

Fault CutBeforeLastChunk() { return Make(Kind::kCutBeforeLastChunk); }

Fault TicketFlood() { return Make(Kind::kTicketFlood); }

Fault KeyUpdateFlood() { return Make(Kind::kKeyUpdateFlood); }

}  // namespace simhost::Faults
