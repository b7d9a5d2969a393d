// Why something could not be read, as data.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Zentar {

/// What went wrong. kFailureKinds gives each its word.
enum class FailureKind {
    kHostUnknown,         ///< the host's name cannot be resolved
    kUnreachable,         ///< no connection, or one that the host ended without an answer
    kTimedOut,            ///< a limit was reached; the phase says in what
    kTlsFailed,           ///< the TLS handshake failed
    kUntrusted,           ///< the host's certificate is not one that the caller trusts
    kCredentialsRefused,  ///< HTTP 401
    kNotPermitted,        ///< HTTP 403, or CIM_ERR_ACCESS_DENIED
    kBusy,                ///< HTTP 503
    kServiceFailed,       ///< any other HTTP 5xx
    kNotCimServer,        ///< any other HTTP status, or an answer that is not CIM over HTTP
    kBadReply,            ///< a reply that is damaged, contradicts itself or is too large
    kUnknownNamespace,    ///< CIM_ERR_INVALID_NAMESPACE
    kUnknownClass,       ///< CIM_ERR_INVALID_CLASS; of an enumeration also NOT_FOUND, NOT_SUPPORTED
    kCimError,           ///< any other CIM status
    kValueUnreadable,    ///< one property of one instance could not be read
    kCancelled,          ///< the caller cancelled
    kDeadline,           ///< the deadline of the whole object was reached
    kBadConnectionInfo,  ///< empty host, unknown type or case, or options that cannot be kept
};

/// What was under way when a limit was reached, or something else ended it.
enum class FailurePhase {
    kNone,  ///< not known, or none of these
    kResolving,
    kConnecting,
    kTlsHandshake,
    kSending,
    kWaiting,    ///< for the first byte of the answer
    kReceiving,  ///< the rest of the answer
};

/// One thing that could not be read, and why.
struct Failure {
    FailureKind kind = FailureKind::kCimError;
    FailurePhase phase = FailurePhase::kNone;
    /// The CIM status (DSP0200) or HTTP status (RFC 9110) that the kind stands for; 0 without one.
    std::int32_t code = 0;
    std::string operation;    ///< "connect", "EnumerateInstances", "Associators", "read property"
    std::string name_space;   ///< the CIM namespace that was addressed; may be empty
    std::string class_name;   ///< the class asked for: enumerated, or associated; may be empty
    std::string association;  ///< the association class of "Associators"
    /// Of "Associators": the class of the object whose associated objects were asked for.
    std::string source_class;
    std::string text;         ///< the reason in words, in part the host's; UTF-8, may be empty
    /// False when nothing was asked of the host any more: it was given up, for the reason that the
    /// other fields repeat, or the caller had cancelled, or the deadline had passed.
    bool was_asked = true;
};

/// Failures in the order in which they were met.
struct FailureList {
    std::vector<Failure> failures;  ///< the newest 1,000
    std::uint64_t dropped = 0;      ///< older ones that nobody fetched in time
};

/// A kind's word in outputs. The table is in the order of FailureKind.
struct FailureKindName {
    FailureKind kind;
    const char* word;
};

inline constexpr FailureKindName kFailureKinds[] = {
    {FailureKind::kHostUnknown, "host_unknown"},
    {FailureKind::kUnreachable, "unreachable"},
    {FailureKind::kTimedOut, "timed_out"},
    {FailureKind::kTlsFailed, "tls_failed"},
    {FailureKind::kUntrusted, "untrusted"},
    {FailureKind::kCredentialsRefused, "credentials_refused"},
    {FailureKind::kNotPermitted, "not_permitted"},
    {FailureKind::kBusy, "busy"},
    {FailureKind::kServiceFailed, "service_failed"},
    {FailureKind::kNotCimServer, "not_cim_server"},
    {FailureKind::kBadReply, "bad_reply"},
    {FailureKind::kUnknownNamespace, "unknown_namespace"},
    {FailureKind::kUnknownClass, "unknown_class"},
    {FailureKind::kCimError, "cim_error"},
    {FailureKind::kValueUnreadable, "value_unreadable"},
    {FailureKind::kCancelled, "cancelled"},
    {FailureKind::kDeadline, "deadline"},
    {FailureKind::kBadConnectionInfo, "bad_connection_info"},
};

inline constexpr const char* WordOf(FailureKind kind) {
    return kFailureKinds[static_cast<std::size_t>(kind)].word;
}

/// A phase's words, to stand after "while"; empty for kNone.
inline constexpr const char* WordsOf(FailurePhase phase) {
    constexpr const char* kWords[] = {"",
                                      "resolving the host's name",
                                      "connecting",
                                      "making the TLS connection",
                                      "sending the request",
                                      "waiting for the answer",
                                      "receiving the answer"};
    return kWords[static_cast<std::size_t>(phase)];
}

}  // namespace Zentar
