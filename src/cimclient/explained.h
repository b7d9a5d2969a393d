// What the client knows about its failures beyond the classes and messages of its exceptions.
#pragma once

#include <string>
#include <utility>

#include "common/records/failure.h"

namespace cimclient {

/// Beside the class of an exception: why it was thrown.
class Explained {
public:
    Explained(Zentar::FailureKind kind, Zentar::FailurePhase phase, std::string reason)
        : kind_(kind), phase_(phase), reason_(std::move(reason)) {}

    Zentar::FailureKind kind() const { return kind_; }
    Zentar::FailurePhase phase() const { return phase_; }
    /// The operating system's or the TLS library's words; empty where the message says it all.
    const std::string& reason() const { return reason_; }

private:
    Zentar::FailureKind kind_;
    Zentar::FailurePhase phase_;
    std::string reason_;
};

/// An exception of the client API that is explained as well.
template <class Exception>
class ExplainedAs : public Exception, public Explained {
public:
    template <class... Arguments>
    explicit ExplainedAs(Explained explanation, const Arguments&... arguments)
        : Exception(arguments...), Explained(std::move(explanation)) {}
};

/// One whose message says it all.
template <class Exception, class... Arguments>
ExplainedAs<Exception> Of(Zentar::FailureKind kind, const Arguments&... arguments) {
    return ExplainedAs<Exception>({kind, Zentar::FailurePhase::kNone, {}}, arguments...);
}

}  // namespace cimclient
