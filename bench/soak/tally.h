// What all operations of all threads came to.
#pragma once

#include <cstddef>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "common/records/failure.h"

namespace soak {

/// May be used from any thread.
class Tally {
public:
    void CountRead();
    /// `failure` is an operation's first; its `result` may be 0 all the same, where only a part is
    /// missing.
    void CountFailure(int result, const Zentar::Failure& failure);
    /// Something that must not happen.
    void CountFault(const std::string& fault);

    std::size_t operations() const;
    std::size_t faults() const;
    void Print() const;

private:
    mutable std::mutex mutex_;
    std::size_t read_ = 0;
    std::size_t faults_ = 0;
    std::map<std::string, std::size_t> failures_;  ///< by what counts as one way to fail
    std::vector<std::string> first_faults_;
};

}  // namespace soak
