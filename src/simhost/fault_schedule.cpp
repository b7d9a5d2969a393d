#include "simhost/fault_schedule.h"

#include <utility>

#include "simhost/fault_acts.h"
#include "simhost/text.h"

namespace simhost {

namespace {

bool Allows(const std::string& limit, const std::string& value) {
    return limit.empty() || EqualIgnoringCase(limit, value);
}

}  // namespace

void FaultSchedule::Add(Fault fault) {
    const std::lock_guard lock(mutex_);
    scheduled_.push_back({std::move(fault)});
}

void FaultSchedule::Clear() {
    const std::lock_guard lock(mutex_);
    scheduled_.clear();
}

template <class Fits>
std::optional<Fault> FaultSchedule::FirstThat(Fits fits) {
    const std::lock_guard lock(mutex_);
    for (auto& [fault, fitted] : scheduled_) {
        if (!fits(fault)) {
            continue;
        }
        ++fitted;
        const bool over = fault.times != 0 && fitted > fault.after + fault.times;
        if (fitted > fault.after && !over) {
            return fault;
        }
    }
    return std::nullopt;
}

std::optional<Fault> FaultSchedule::ForConnection() {
    return FirstThat([](const Fault& candidate) { return ActsOnConnect(candidate.kind); });
}

std::optional<Fault> FaultSchedule::ForRequest(const std::string& operation,
                                               const std::string& class_name) {
    return FirstThat([&](const Fault& candidate) {
        return !ActsOnConnect(candidate.kind) && Allows(candidate.only_operation, operation) &&
               Allows(candidate.only_class, class_name);
    });
}

}  // namespace simhost
