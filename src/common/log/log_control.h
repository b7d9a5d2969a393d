// Settings of the reference log library: what is logged, and where to.
#pragma once

#include <functional>
#include <string>

namespace Zentar {

/// A finished message, as the log library received it.
struct LogMessage {
    unsigned level;
    std::string file;  ///< base name of the source file
    int line;
    std::string text;  ///< as written, line breaks and control characters included
};

using LogSink = std::function<void(const LogMessage&)>;

/// Messages above this level are not built. 0 to 4; 1 at start.
void SetMinLogLevel(unsigned level);

/// Writes to standard error, as at start.
void LogToStandardError();

/// Appends to the file. Returns an empty text, or what went wrong; then nothing has changed.
std::string LogToFile(const std::string& path);

/// Hands every message to `sink` in place of writing it, one at a time, on the thread that logged
/// it. An empty sink returns to the destination set before.
void SetLogSink(LogSink sink);

/// The line (or lines, continuations indented) that the reference library writes for a message:
/// "TIME [LEVEL] FILE:LINE TEXT" with a line break at the end. Control characters appear escaped,
/// so that no text can pass for another message.
std::string FormatLogMessage(const LogMessage& message);

}  // namespace Zentar
