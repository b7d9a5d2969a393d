// A described host with differences of its own.
#pragma once

#include <optional>
#include <string>
#include <unordered_map>
#include <utility>

#include "simhost/model.h"

namespace simhost {

/// Holds only what differs, so that a fleet of hosts shares one description, which must outlive
/// this. Instances are named by those of the description.
class HostVariant {
public:
    explicit HostVariant(const Host& described) : described_(&described), name_(described.name) {}

    const Host& described() const { return *described_; }
    const std::string& name() const { return name_; }

    /// The instance as this host has it; null when it has none.
    const Instance* Shown(const Instance& described) const;
    /// The instance that has this path here; null when there is none.
    const Instance* Find(const Namespace& in, const ObjectPath& path) const;

    void Rename(std::string name) { name_ = std::move(name); }
    /// This host's own copy, to be changed.
    Instance& Own(const Instance& described);
    void LeaveOut(const Instance& described) { differing_[&described] = std::nullopt; }

private:
    const Host* described_;
    std::string name_;
    std::unordered_map<const Instance*, std::optional<Instance>> differing_;
};

}  // namespace simhost
