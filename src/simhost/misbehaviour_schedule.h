// Which misbehaviour applies when.
#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "simhost/misbehaviour.h"

namespace simhost {

/// Shared by a server's threads.
class MisbehaviourSchedule {
public:
    void Add(Misbehaviour misbehaviour);
    void Clear();

    /// The one that applies to this connection or request, which counts towards its limits.
    std::optional<Misbehaviour> ForConnection();
    std::optional<Misbehaviour> ForRequest(const std::string& operation,
                                           const std::string& class_name);

private:
    template <class Fits>
    std::optional<Misbehaviour> FirstThat(Fits fits);

    struct Scheduled {
        Misbehaviour misbehaviour;
        std::size_t fitted = 0;
    };

    std::mutex mutex_;
    std::vector<Scheduled> scheduled_;
};

}  // namespace simhost
