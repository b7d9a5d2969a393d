#include "soak/tally.h"

#include <cstdio>
#include <regex>

namespace soak {

namespace {

constexpr std::size_t kFaultsToKeep = 20;

/// What differs from one reply to the next.
struct Variable {
    std::regex pattern;
    const char* stands_for_it;
};

std::string KindOf(std::string reason) {
    static const Variable kVariables[] = {
        {std::regex("on line [0-9]+"), "on line N"},
        {std::regex("127.0.0.1:[0-9]+"), "the host"},
        {std::regex("expected \"[0-9]+\""), "expected another"},
        {std::regex("got [^]* instead"), "got something else"},
    };
    for (const Variable& variable : kVariables) {
        reason = std::regex_replace(reason, variable.pattern, variable.stands_for_it);
    }
    return reason;
}

}  // namespace

void Tally::CountRead() {
    const std::lock_guard lock(mutex_);
    ++read_;
}

void Tally::CountFailure(int result, const std::string& reason) {
    const std::string kind = KindOf(reason);
    const std::lock_guard lock(mutex_);
    ++failures_[result][kind];
}

void Tally::CountFault(const std::string& fault) {
    const std::lock_guard lock(mutex_);
    ++faults_;
    if (first_faults_.size() < kFaultsToKeep) {
        first_faults_.push_back(fault);
    }
}

std::size_t Tally::operations() const {
    const std::lock_guard lock(mutex_);
    std::size_t all = read_ + faults_;
    for (const auto& [result, kinds] : failures_) {
        for (const auto& [kind, count] : kinds) {
            all += count;
        }
    }
    return all;
}

std::size_t Tally::faults() const {
    const std::lock_guard lock(mutex_);
    return faults_;
}

void Tally::Print() const {
    const std::size_t all = operations();
    const std::lock_guard lock(mutex_);
    std::printf("\n%9zu operations\n%9zu read whole\n%9zu faults\n", all, read_, faults_);
    std::printf("\n%9s  result  failure\n", "times");
    for (const auto& [result, kinds] : failures_) {
        for (const auto& [kind, count] : kinds) {
            std::printf("%9zu  %6d  %s\n", count, result, kind.c_str());
        }
    }
    for (const std::string& fault : first_faults_) {
        std::printf("FAULT: %s\n", fault.c_str());
    }
}

}  // namespace soak
