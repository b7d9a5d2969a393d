// Why a connection could not be made or used.
#pragma once

#include <string>
#include <utility>

#include "common/records/failure.h"

namespace cimclient {

/// Thrown by this folder. The connection is of no more use.
struct NetworkError {
    Zentar::FailureKind kind;
    Zentar::FailurePhase phase;
    std::string reason;  ///< the operating system's or the TLS library's words
};

}  // namespace cimclient
