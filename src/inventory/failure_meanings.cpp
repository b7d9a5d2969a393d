#include "inventory/failure_meanings.h"

namespace inventory {

using Zentar::Failure;
using Zentar::FailureKind;
using Zentar::FailurePhase;

// A table whose rows the compiler counts: a kind without a row does not compile.
#pragma GCC diagnostic push
#pragma GCC diagnostic error "-Wswitch"

FailureMeaning MeaningOf(FailureKind kind) {
    switch (kind) {
        case FailureKind::kHostUnknown:
            return {"the host's name could not be resolved",
                    "check the spelling of --host, or give its address"};
        case FailureKind::kUnreachable:
            return {"the host could not be reached, or closed the connection unanswered",
                    "check that it is up, that its CIM service runs, and --host, --port and "
                    "--transport (CIM servers listen on 5989 for https, 5988 for http)"};
        case FailureKind::kTimedOut:
            return {"the host did not answer in time",
                    "check the address, --port, --transport and firewalls, or give a longer "
                    "--connect-timeout or --request-timeout; restart the host's CIM service if it "
                    "persists"};
        case FailureKind::kTlsFailed:
            return {"the host answers, but the TLS handshake failed",
                    "use --transport http if the port is one for plain HTTP, else check --port "
                    "(CIM servers listen on 5989 for https)"};
        case FailureKind::kUntrusted:
            return {"the host's certificate is not trusted, so nothing was sent to it",
                    "compare the fingerprint with the host's own, then correct --fingerprint or "
                    "--ca-file"};
        case FailureKind::kCredentialsRefused:
            return {
                "the host refused the user name or password, or the account lacks the CIM "
                "permission",
                "check --user and the password"};
        case FailureKind::kNotPermitted:
            return {"the host does not let this account read it",
                    "use an account with the CIM permission"};
        case FailureKind::kBusy:
            return {"the host's CIM service is overloaded or starting",
                    "try again in some minutes"};
        case FailureKind::kServiceFailed:
            return {"the host's CIM service failed",
                    "try again, and restart the host's CIM service if it persists"};
        case FailureKind::kNotCimServer:
            return {"something answers there, but it is not a CIM server",
                    "check --host, --port and --transport (CIM servers listen on 5989 for https, "
                    "5988 for http)"};
        case FailureKind::kBadReply:
            return {"the host's reply is damaged, cut off or not CIM-XML",
                    "try again, and look for a proxy or a failing CIM service if it persists"};
        case FailureKind::kUnknownNamespace:
            return {"the host does not have this kind of inventory: the namespace is unknown",
                    "install the hardware vendor's CIM provider on the host"};
        case FailureKind::kUnknownClass:
            return {"the host does not have this kind of inventory: the class is unknown",
                    "install the CIM provider for it on the host, or leave the section out"};
        case FailureKind::kCimError:
            return {"the host reported an error",
                    "try again, and look into the host's CIM service if it persists"};
        case FailureKind::kValueUnreadable:
            return {"a value from the host could not be read",
                    "look at the property on the host; everything else was read"};
        case FailureKind::kCancelled:
            return {"reading was interrupted", "start again to read the rest"};
        case FailureKind::kDeadline:
            return {"the time for the whole host was over",
                    "give a longer --timeout, or name fewer sections"};
        case FailureKind::kBadConnectionInfo:
            return {"the connection's options cannot be used", "correct them, see --help"};
    }
    return {};
}

#pragma GCC diagnostic pop

namespace {

std::string ReasonOf(const Failure& failure) {
    if (failure.text.empty() && !failure.class_name.empty()) {
        return "no reason given for " + failure.class_name;
    }
    return failure.text;
}

}  // namespace

std::string DescribeFailure(const Failure& failure) {
    const std::string phase = WordsOf(failure.phase);
    const std::string reason = ReasonOf(failure);
    std::string detail = phase.empty() ? "" : "while " + phase;
    detail += detail.empty() || reason.empty() ? reason : ": " + reason;
    return MeaningOf(failure.kind).meaning + (detail.empty() ? "" : " (" + detail + ")");
}

}  // namespace inventory
