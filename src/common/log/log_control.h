// Settings of the reference log library: what is logged, and where to.
#pragma once

#include <functional>
#include <string>

#include "common/log/log_export.h"

namespace Zentar {

/// A finished message, as the log library received it.
struct LogMessage {
    unsigned level;
    std::string file;  ///< base name of the source file
    int line;
    std::string text;     ///< as written, line breaks and control characters included
    std::string context;  ///< what it is about; see LogContext
};

using LogSink = std::function<void(const LogMessage&)>;

/// Messages above this level are not built. 0 to 4; 1 at start.
ZENTAR_LOG_EXPORT void SetMinLogLevel(unsigned level);

/// Writes to standard error, as at start.
ZENTAR_LOG_EXPORT void LogToStandardError();

/// Appends to the file. Returns an empty text, or what went wrong; then nothing has changed.
ZENTAR_LOG_EXPORT std::string LogToFile(const std::string& path);

/// Hands every message to `sink` in place of writing it, one at a time, on the thread that logged
/// it. An empty sink returns to the destination set before.
ZENTAR_LOG_EXPORT void SetLogSink(LogSink sink);

/// While it lives, what this thread logs is about something of this name, such as a host, and each
/// line says so. At most one at a time on a thread.
class ZENTAR_LOG_EXPORT LogContext {
public:
    /// With a `file` the messages are appended to that instead of the destination, as far as it can
    /// be opened.
    explicit LogContext(const std::string& name, const std::string& file = {});
    ~LogContext();
    LogContext(const LogContext&) = delete;
    LogContext& operator=(const LogContext&) = delete;
};

/// Writes a message to the destination, past any sink. A destination that cannot take it loses it.
ZENTAR_LOG_EXPORT void WriteLogMessage(const LogMessage& message);

/// What the reference library writes for a message: "TIME [LEVEL] FILE:LINE TEXT" and a line break,
/// with the context, if there is one, before the file. Further lines of the text are indented and
/// control characters appear escaped, so that no text can pass for another message.
ZENTAR_LOG_EXPORT std::string FormatLogMessage(const LogMessage& message);

}  // namespace Zentar
