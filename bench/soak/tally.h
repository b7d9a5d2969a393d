// What all operations of all threads came to.
#pragma once

#include <cstddef>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace soak {

/// May be used from any thread.
class Tally {
public:
    void CountRead();
    /// `reason` is the first failure that the module logged; `result` tells whether it kept that to
    /// itself, as it does where a part is missing.
    void CountFailure(int result, const std::string& reason);
    /// Something that must not happen.
    void CountFault(const std::string& fault);

    std::size_t operations() const;
    std::size_t faults() const;
    void Print() const;

private:
    mutable std::mutex mutex_;
    std::size_t read_ = 0;
    std::size_t faults_ = 0;
    std::map<int, std::map<std::string, std::size_t>> failures_;
    std::vector<std::string> first_faults_;
};

}  // namespace soak
