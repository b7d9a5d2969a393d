#include "common/cimom/src/exception_causes.h"

#include <Pegasus/Client/CIMClientException.h>

#include <algorithm>
#include <iterator>
#include <string>

namespace Zentar {

namespace {

struct CodeKind {
    std::int32_t code;
    FailureKind kind;
};

constexpr CodeKind kHttpStatuses[] = {
    {401, FailureKind::kCredentialsRefused},
    {403, FailureKind::kNotPermitted},
    {503, FailureKind::kBusy},
};

constexpr CodeKind kCimStatuses[] = {
    {Pegasus::CIM_ERR_ACCESS_DENIED, FailureKind::kNotPermitted},
    {Pegasus::CIM_ERR_INVALID_NAMESPACE, FailureKind::kUnknownNamespace},
    {Pegasus::CIM_ERR_INVALID_CLASS, FailureKind::kUnknownClass},
};

template <std::size_t count>
FailureKind KindOf(std::int32_t code, const CodeKind (&kinds)[count], FailureKind otherwise) {
    const auto* const row =
        std::find_if(std::begin(kinds), std::end(kinds),
                     [code](const CodeKind& candidate) { return candidate.code == code; });
    return row == std::end(kinds) ? otherwise : row->kind;
}

FailureKind KindOfHttpStatus(std::int32_t status) {
    const bool is_server_error = status >= 500 && status <= 599;
    return KindOf(status, kHttpStatuses,
                  is_server_error ? FailureKind::kServiceFailed : FailureKind::kNotCimServer);
}

/// Whether the exception is of the class, with the kind that this stands for.
struct ClassKind {
    bool (*is_of_class)(const Pegasus::Exception& exception);
    FailureKind kind;
};

template <class Class>
bool Is(const Pegasus::Exception& exception) {
    return dynamic_cast<const Class*>(&exception) != nullptr;
}

constexpr ClassKind kClasses[] = {
    {Is<Pegasus::InvalidLocatorException>, FailureKind::kHostUnknown},
    {Is<Pegasus::CannotConnectException>, FailureKind::kUnreachable},
    {Is<Pegasus::CannotCreateSocketException>, FailureKind::kUnreachable},
    {Is<Pegasus::ConnectionTimeoutException>, FailureKind::kTimedOut},
    {Is<Pegasus::SSLException>, FailureKind::kTlsFailed},
    {Is<Pegasus::NotConnectedException>, FailureKind::kBadConnectionInfo},
};

FailureKind KindOfClass(const Pegasus::Exception& exception) {
    const auto* const row = std::find_if(
        std::begin(kClasses), std::end(kClasses),
        [&exception](const ClassKind& candidate) { return candidate.is_of_class(exception); });
    return row == std::end(kClasses) ? FailureKind::kBadReply : row->kind;
}

}  // namespace

Failure CauseByClass(const Pegasus::Exception& exception) {
    Failure cause;
    cause.text = std::string(exception.getMessage().getCString());
    if (const auto* cim = dynamic_cast<const Pegasus::CIMException*>(&exception)) {
        cause.code = static_cast<std::int32_t>(cim->getCode());
        cause.kind = KindOf(cause.code, kCimStatuses, FailureKind::kCimError);
    } else if (const auto* http =
                   dynamic_cast<const Pegasus::CIMClientHTTPErrorException*>(&exception)) {
        cause.code = static_cast<std::int32_t>(http->getCode());
        cause.kind = KindOfHttpStatus(cause.code);
    } else {
        cause.kind = KindOfClass(exception);
    }
    return cause;
}

FailureKind KindInEnumeration(const Failure& cause) {
    const bool says_no_class =
        cause.code == Pegasus::CIM_ERR_NOT_FOUND || cause.code == Pegasus::CIM_ERR_NOT_SUPPORTED;
    return cause.kind == FailureKind::kCimError && says_no_class ? FailureKind::kUnknownClass
                                                                 : cause.kind;
}

}  // namespace Zentar
