#include "soak/tally.h"

#include <cstdio>
#include <iomanip>
#include <sstream>

namespace soak {

namespace {

constexpr std::size_t kFaultsToKeep = 20;

/// A line of the table: what is the same in all failures of a kind.
std::string LineOf(int result, const Zentar::Failure& failure) {
    std::ostringstream line;
    line << std::setw(6) << result << "  " << std::left << std::setw(19) << failure.operation
         << std::setw(20) << Zentar::WordOf(failure.kind) << std::right << std::setw(4)
         << failure.code << "  " << Zentar::WordsOf(failure.phase);
    return line.str();
}

}  // namespace

void Tally::CountRead() {
    const std::lock_guard lock(mutex_);
    ++read_;
}

void Tally::CountFailure(int result, const Zentar::Failure& failure) {
    const std::lock_guard lock(mutex_);
    ++failures_[LineOf(result, failure)];
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
    for (const auto& [line, count] : failures_) {
        all += count;
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
    std::printf("\n%9s  result  %-19s%-20s%4s  while\n", "times", "operation", "failure", "code");
    for (const auto& [line, count] : failures_) {
        std::printf("%9zu  %s\n", count, line.c_str());
    }
    for (const std::string& fault : first_faults_) {
        std::printf("FAULT: %s\n", fault.c_str());
    }
}

}  // namespace soak
