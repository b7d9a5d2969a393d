#include "soak/failure_log.h"

#include <utility>

#include "common/log/log_control.h"

namespace soak {

namespace {

thread_local std::string failure;

}  // namespace

void KeepFailures() {
    Zentar::SetMinLogLevel(1);
    Zentar::SetLogSink([](const Zentar::LogMessage& message) {
        if (failure.empty()) {
            failure = message.text;
        }
    });
}

std::string TakeFailure() { return std::exchange(failure, {}); }

}  // namespace soak
