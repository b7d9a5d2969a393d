// How a simulated host can be made to fail.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace simhost {

/// One way to fail, and when. Made by the functions below or by name, then narrowed by its limits.
struct Fault {
    enum class Kind {
        // Instead of an answer, or of part of it.
        kClose,
        kReset,
        kStall,
        kRaw,
        kTruncate,
        kSlowDrip,
        // At the start of a connection, before the first byte is read.
        kCloseOnConnect,
        kStallOnConnect,
        kRawOnConnect,
        // Answers that are wrong in themselves.
        kWrongLength,
        kCimErrorElement,
        kCimErrorTrailer,
        kHttpStatus,
        kContentType,
        kOperationHeader,
        kMessageId,
        kHugeReply,
        kCloseEvery,
        // Answers that are made to hurt, or to give something away.
        kHugeError,
        kNestedQuotes,
        kEchoAuthorization,
        kWideCells,
        kManyErrors,
        kStatusCode,
        kCutBeforeLastChunk,
        // After an answer.
        kTicketFlood,
        kKeyUpdateFlood,
    };

    Kind kind = Kind::kClose;
    std::int64_t number = 0;             ///< a byte count, a status or a count of requests
    std::string text;                    ///< a reason, a description or the bytes to send
    std::string cim_error;               ///< value of a CIMError header; empty: no such header
    std::chrono::milliseconds pause{0};  ///< between the pieces of a slow answer
    bool abrupt = false;                 ///< by reset, or without the announcement

    // Limits: it applies to a request that fits all of them. Those on connect know no request.
    std::string only_operation;  ///< such as "Associators"; empty: any
    std::string only_class;      ///< the enumerated, or the source object's; empty: any
    std::size_t after = 0;       ///< lets so many fitting requests (or connections) pass first
    std::size_t times = 0;       ///< then applies so many times; 0: until Server::ClearFaults()
};

namespace Faults {

/// Closes the connection instead of answering; in TLS without close_notify.
Fault Close();
/// The same by TCP reset.
Fault Reset();
/// Never answers and keeps the connection open.
Fault Stall();
/// Sends `bytes` as they are instead of an HTTP answer, then closes.
Fault Raw(std::string bytes);
/// Sends the answer's first `bytes`, counted from its status line, then closes, or resets.
Fault Truncate(std::size_t bytes, bool reset = false);
/// Sends `bytes` of the answer at a time, with a pause after each piece.
Fault SlowDrip(std::size_t bytes, std::chrono::milliseconds pause);

Fault CloseOnConnect();
/// Accepts connections and does nothing more, no TLS handshake either.
Fault StallOnConnect();
/// Sends `bytes` at once on connection, before any TLS, then waits for the peer to close.
Fault RawOnConnect(std::string bytes);

/// Announces `surplus` bytes more than it sends (fewer when negative), and keeps the connection.
Fault WrongLength(std::int64_t surplus);
/// A CIM error as an ERROR element, in an answer with a Content-Length.
Fault CimErrorElement(unsigned code, std::string description);
/// A CIM error in the trailers of an answer that breaks off in the middle of its XML.
Fault CimErrorTrailer(unsigned code, std::string description);
/// Another HTTP status, without a body.
Fault HttpStatus(int status, std::string reason, std::string cim_error = {});
/// Another Content-Type; an empty one leaves the header out.
Fault ContentType(std::string type);
/// Another CIMOperation header; an empty one leaves it out.
Fault OperationHeader(std::string operation);
/// Another message's ID in the answer.
Fault MessageId(std::string id);
/// Repeats the instances of the answer until it has at least `bytes` bytes, well formed to its end.
Fault HugeReply(std::size_t bytes);
/// Closes after every `requests`-th request of a connection, with `Connection: close` or without.
Fault CloseEvery(std::size_t requests, bool announced = true);

/// A CIM error (1) in an ERROR element whose description has at least `bytes` bytes.
Fault HugeError(std::size_t bytes);
/// Gives the first instance of the answer a text of so many quotation marks within 16 levels of
/// embedded instances. An answer without instances stays as it is.
Fault NestedQuotes(std::size_t marks);
/// A CIM error (1) that repeats the request's Authorization field.
Fault EchoAuthorization();
/// Makes each text of the answer's properties longer by so many characters.
Fault WideCells(std::size_t characters);
/// A CIM error (1) that reads different for each request.
Fault ManyErrors();
/// A CIM error in the trailers whose code is written like this.
Fault StatusCode(std::string code);
/// Sends all of a chunked answer but its last chunk, of another one all but its last byte; then
/// closes.
Fault CutBeforeLastChunk();
/// Answers, and then sends session tickets, or key updates, until the client hangs up: with
/// anything but TLS 1.3 nothing more.
Fault TicketFlood();
Fault KeyUpdateFlood();

/// Reads "NAME", "NAME=NUMBER", "NAME=TEXT" or "NAME=NUMBER,TEXT", such as "http-status=503" or
/// "cim-error-element=1,provider died". Limits stand after the name: "NAME@LIMIT,LIMIT=...", where
/// LIMIT is "CLASS", "operation:NAME", "after:COUNT" or "times:COUNT", such as
/// "stall@IBMSG_PCIDevice,times:1". Throws std::invalid_argument with a text that says what to
/// write instead.
Fault ByName(std::string_view text);
/// A name that ByName() knows.
struct Name {
    std::string name;
    std::string value;    ///< what may follow, such as "=NUMBER"; empty: nothing
    std::string meaning;  ///< a line of explanation
};
std::vector<Name> Names();

}  // namespace Faults

}  // namespace simhost
