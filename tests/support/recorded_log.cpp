#include "support/recorded_log.h"

#include <mutex>

#include "common/log/log_control.h"

namespace support {

namespace {

std::mutex mutex;
std::vector<Zentar::LogMessage> messages;

}  // namespace

RecordedLog::RecordedLog(unsigned level) {
    Clear();
    Zentar::SetMinLogLevel(level);
    Zentar::SetLogSink([](const Zentar::LogMessage& message) {
        const std::lock_guard lock(mutex);
        messages.push_back(message);
    });
}

RecordedLog::~RecordedLog() {
    Zentar::SetLogSink({});
    Zentar::SetMinLogLevel(1);
}

std::vector<std::string> RecordedLog::Messages() const {
    const std::lock_guard lock(mutex);
    std::vector<std::string> lines;
    for (const auto& message : messages) {
        lines.push_back(std::to_string(message.level) + " " + message.file + " " + message.text);
    }
    return lines;
}

std::vector<std::string> RecordedLog::Texts(unsigned level) const {
    const std::lock_guard lock(mutex);
    std::vector<std::string> texts;
    for (const auto& message : messages) {
        if (message.level == level) {
            texts.push_back(message.text);
        }
    }
    return texts;
}

void RecordedLog::Clear() {
    const std::lock_guard lock(mutex);
    messages.clear();
}

}  // namespace support
