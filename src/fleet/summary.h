// What came of a run, in numbers.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <iosfwd>
#include <map>
#include <string>
#include <vector>

#include "fleet/host_list.h"
#include "inventory/document.h"

namespace fleet {

class Summary {
public:
    void Add(const HostEntry& entry, const inventory::Document& document);
    /// Hosts that were not read, because the run was ended.
    void SetRest(std::size_t count) { rest_ = count; }
    void SetDuration(std::chrono::milliseconds duration) { duration_ = duration; }

    std::size_t Count(inventory::Status status) const {
        return statuses_[static_cast<std::size_t>(status)];
    }
    /// Of all documents.
    std::size_t Taken() const;

    /// Some lines for people: hosts by status, failures by kind with the first hosts that met them.
    void WriteText(std::ostream& out) const;
    /// The same as a JSON object, with all hosts.
    void WriteJson(std::ostream& out) const;

private:
    std::array<std::size_t, 5> statuses_{};
    std::map<Zentar::FailureKind, std::vector<std::string>> failures_;  ///< names of hosts
    std::size_t rest_ = 0;
    std::chrono::milliseconds duration_{};
};

}  // namespace fleet
