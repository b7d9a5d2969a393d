// Which fault applies when.
#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "simhost/fault.h"

namespace simhost {

/// Shared by a server's threads.
class FaultSchedule {
public:
    void Add(Fault fault);
    void Clear();

    /// The one that applies to this connection or request, which counts towards its limits.
    std::optional<Fault> ForConnection();
    std::optional<Fault> ForRequest(const std::string& operation, const std::string& class_name);

private:
    template <class Fits>
    std::optional<Fault> FirstThat(Fits fits);

    struct Scheduled {
        Fault fault;
        std::size_t fitted = 0;
    };

    std::mutex mutex_;
    std::vector<Scheduled> scheduled_;
};

}  // namespace simhost
