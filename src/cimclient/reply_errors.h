// What the readers of a reply throw. The client turns it into the exceptions of its API.
#pragma once

#include <string>

#include "common/records/failure.h"

namespace cimclient {

/// The body is not the result. The message may hold any bytes.
struct BodyError {
    std::string message;
};

/// It is not the CIM-XML that was expected.
struct XmlError : BodyError {};

/// It answers another request, or holds a value that contradicts itself.
struct ResponseError : BodyError {};

/// It reports an error: a CIM status, and the server's description.
struct StatusError : BodyError {
    int status;
};

/// The reply is not HTTP, or ended before it was whole.
struct HttpError {
    std::string message;
    Zentar::FailureKind kind = Zentar::FailureKind::kBadReply;
};

/// The reply's framing cannot be followed: what a server would answer to such a message.
struct FramingError : HttpError {
    unsigned status;
    const char* status_text;
};

}  // namespace cimclient
