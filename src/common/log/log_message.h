// The one way in which the module writes a log message.
#pragma once

#include "common/log/log.h"

/// A stream for one message at the given level, named after the file and line that use the macro.
/// Nothing to the right of it is evaluated when the minimum log level is lower.
#define ZENTAR_LOG(level)                          \
    if (::Zentar::Log::GetMinLogLevel() < (level)) \
        ;                                          \
    else                                           \
        ::Zentar::Log((level), __FILE__, __LINE__).Stream()
