#include "cli/failure_log.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "common/log/log_control.h"

namespace command {

namespace {

/// The module names the class of a request at this level.
constexpr unsigned kNeededLevel = 3;
constexpr unsigned kErrorLevel = 1;

constexpr std::string_view kClassLabel = "The value of class name is:";
constexpr std::string_view kAssociatorsCall = "Calling GetCIMArrayFromAssociators";
constexpr std::string_view kReasonLabel = " with the reason: ";
constexpr std::string_view kWholeRequests[] = {"Enumerate instances failed",
                                               "Failed to connect remote cimserver"};

}  // namespace

FailureLog::FailureLog(unsigned forwarded_level) {
    Zentar::SetMinLogLevel(std::max(forwarded_level, kNeededLevel));
    Zentar::SetLogSink([this, forwarded_level](const Zentar::LogMessage& message) {
        Notice(message.level, message.text);
        if (message.level <= forwarded_level) {
            Zentar::WriteLogMessage(message);
        }
    });
}

FailureLog::~FailureLog() { Zentar::SetLogSink({}); }

std::vector<Failure> FailureLog::Take() {
    class_name_.clear();
    return std::exchange(failures_, {});
}

void FailureLog::Notice(unsigned level, const std::string& text) {
    if (text.starts_with(kClassLabel)) {
        class_name_ = text.substr(kClassLabel.size());
    } else if (text.starts_with(kAssociatorsCall)) {
        class_name_.clear();
    }
    const std::size_t label = text.find(kReasonLabel);
    if (level != kErrorLevel || label == std::string::npos) {
        return;
    }
    const std::string_view operation = std::string_view(text).substr(0, label);
    const bool whole_request = std::ranges::count(kWholeRequests, operation) > 0;
    const Failure failure{class_name_, text.substr(label + kReasonLabel.size()), whole_request};
    if (std::ranges::count(failures_, failure) == 0) {
        failures_.push_back(failure);
    }
}

}  // namespace command
