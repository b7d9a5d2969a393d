#include "simhost/misbehaviour_schedule.h"

#include <utility>

#include "simhost/misbehaviour_acts.h"
#include "simhost/text.h"

namespace simhost {

namespace {

bool Allows(const std::string& limit, const std::string& value) {
    return limit.empty() || EqualIgnoringCase(limit, value);
}

}  // namespace

void MisbehaviourSchedule::Add(Misbehaviour misbehaviour) {
    const std::lock_guard lock(mutex_);
    scheduled_.push_back({std::move(misbehaviour)});
}

void MisbehaviourSchedule::Clear() {
    const std::lock_guard lock(mutex_);
    scheduled_.clear();
}

template <class Fits>
std::optional<Misbehaviour> MisbehaviourSchedule::FirstThat(Fits fits) {
    const std::lock_guard lock(mutex_);
    for (auto& [misbehaviour, fitted] : scheduled_) {
        if (!fits(misbehaviour)) {
            continue;
        }
        ++fitted;
        const bool over =
            misbehaviour.times != 0 && fitted > misbehaviour.after + misbehaviour.times;
        if (fitted > misbehaviour.after && !over) {
            return misbehaviour;
        }
    }
    return std::nullopt;
}

std::optional<Misbehaviour> MisbehaviourSchedule::ForConnection() {
    return FirstThat([](const Misbehaviour& candidate) { return ActsOnConnect(candidate.kind); });
}

std::optional<Misbehaviour> MisbehaviourSchedule::ForRequest(const std::string& operation,
                                                             const std::string& class_name) {
    return FirstThat([&](const Misbehaviour& candidate) {
        return !ActsOnConnect(candidate.kind) && Allows(candidate.only_operation, operation) &&
               Allows(candidate.only_class, class_name);
    });
}

}  // namespace simhost
