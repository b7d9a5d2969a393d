#include "common/log/log.h"

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <locale>
#include <memory>
#include <mutex>
#include <string_view>

#include "common/log/log_control.h"
#include "common/log/log_text.h"
#include "common/platform/system_words.h"

namespace Zentar {

namespace {

std::atomic<unsigned> min_level{1};

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

/// Where messages go; all of it is used under the mutex.
struct Destination {
    std::mutex mutex;
    LogSink sink;
    File file;  ///< standard error when null
};

/// What the messages of a thread are about, and where they go.
struct Context {
    std::string name;
    File file;  ///< the destination when null
};

Context& TheContext() {
    thread_local Context context;
    return context;
}

/// Neither is it buffered. Null with errno when it cannot be opened.
File OpenedToAppend(const std::string& path) {
    File file(std::fopen(path.c_str(), "ae"));  // "e": no child process inherits it
    if (file) {
        std::setvbuf(file.get(), nullptr, _IONBF, 0);
    }
    return file;
}

/// Never destroyed, so that messages of static objects find it to the end.
Destination& TheDestination() {
    static Destination& destination = *new Destination;
    return destination;
}

std::string BaseName(std::string_view path) {
    return std::string(path.substr(path.find_last_of("/\\") + 1));
}

std::string UtcTimeStamp() {
    const auto now = std::chrono::system_clock::now();
    const auto micros =
        std::chrono::duration_cast<std::chrono::microseconds>(now.time_since_epoch()).count() %
        1000000;
    const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    std::tm utc{};
    gmtime_r(&seconds, &utc);
    char text[40];
    const std::size_t length = std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &utc);
    std::snprintf(text + length, sizeof text - length, ".%06ldZ", static_cast<long>(micros));
    return text;
}

/// One write per message, so that lines of many threads and processes never mix: neither standard
/// error nor a file is buffered.
void WriteLine(std::FILE* file, const std::string& line) {
    std::fwrite(line.data(), 1, line.size(), file);
}

}  // namespace

Log::Log(unsigned level, const char* file, int line) : level_(level), file_(file), line_(line) {
    stream_.imbue(std::locale::classic());
}

Log::~Log() {
    try {
        const LogMessage message{level_, BaseName(file_), line_, stream_.str(), TheContext().name};
        LogSink sink;
        {
            const std::lock_guard lock(TheDestination().mutex);
            sink = TheDestination().sink;
        }
        if (sink) {
            static std::mutex& one_at_a_time = *new std::mutex;
            const std::lock_guard lock(one_at_a_time);
            sink(message);
        } else {
            WriteLogMessage(message);
        }
    } catch (...) {
        // A message that cannot be written is dropped; the work that it reports must go on.
    }
}

std::ostringstream& Log::Stream() { return stream_; }

unsigned Log::GetMinLogLevel() { return min_level.load(std::memory_order_relaxed); }

void SetMinLogLevel(unsigned level) { min_level.store(level, std::memory_order_relaxed); }

void LogToStandardError() {
    const std::lock_guard lock(TheDestination().mutex);
    TheDestination().file.reset();
}

std::string LogToFile(const std::string& path) {
    File file = OpenedToAppend(path);
    if (!file) {
        return path + ": " + SystemWords(errno);
    }
    const std::lock_guard lock(TheDestination().mutex);
    TheDestination().file = std::move(file);
    return {};
}

void SetLogSink(LogSink sink) {
    const std::lock_guard lock(TheDestination().mutex);
    TheDestination().sink = std::move(sink);
}

LogContext::LogContext(const std::string& name, const std::string& file) {
    TheContext() = {name, file.empty() ? nullptr : OpenedToAppend(file)};
}

LogContext::~LogContext() { TheContext() = {}; }

void WriteLogMessage(const LogMessage& message) {
    try {
        const std::string line = FormatLogMessage(message);
        if (TheContext().file) {
            WriteLine(TheContext().file.get(), line);
            return;
        }
        Destination& destination = TheDestination();
        const std::lock_guard lock(destination.mutex);
        WriteLine(destination.file ? destination.file.get() : stderr, line);
    } catch (...) {
        // As in Log's destructor.
    }
}

std::string FormatLogMessage(const LogMessage& message) {
    const std::string context = message.context.empty() ? "" : SafeLogText(message.context) + " ";
    return UtcTimeStamp() + " [" + std::to_string(message.level) + "] " + context + message.file +
           ":" + std::to_string(message.line) + " " + SafeLogText(message.text) + "\n";
}

}  // namespace Zentar
