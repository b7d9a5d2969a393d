// Failures as the exceptions of the client API, with what the client knows of them beyond the
// exceptions' classes and messages.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "Pegasus/Common/Exception.h"
#include "client/credentials.h"
#include "common/records/failure.h"
#include "net/network_error.h"

namespace cimclient {

/// Why an exception was thrown.
struct Explained {
    Zentar::FailureKind kind;
    Zentar::FailurePhase phase = Zentar::FailurePhase::kNone;
    /// The operating system's or the TLS library's words; empty where the message says it all.
    std::string reason = {};
};

/// An exception of the client API that is explained as well.
template <class Exception>
struct ExplainedAs : Exception, Explained {
    template <class... Arguments>
    explicit ExplainedAs(Explained explanation, const Arguments&... arguments)
        : Exception(arguments...), Explained(std::move(explanation)) {}
};

/// What the readers of a reply throw is thrown on as exceptions.
void WithExceptions(const std::function<void()>& read);

/// For a connection that could not be made.
[[noreturn]] void ThrowCannotConnect(const NetworkError& error, const std::string& host,
                                     unsigned port);

/// For a request that was under way.
[[noreturn]] void ThrowInterrupted(const NetworkError& error, bool is_receiving);

/// For one that the host ended without an answer.
[[noreturn]] void ThrowUnanswered(const std::string& reason);

/// The longest message, in bytes; a longer one ends with an ellipsis.
inline constexpr std::size_t kMaxMessageBytes = 4096;

/// Messages quote the host, which may say anything at any length, and echo the credentials: removes
/// these, and what is too long.
void MakeFitForLogs(Pegasus::Exception& exception, const Credentials& credentials);

}  // namespace cimclient
