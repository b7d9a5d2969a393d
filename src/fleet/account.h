// Accounts whose password may be stale: hosts lock an account after a few refusals.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "common/platform/secret.h"

namespace fleet {

/// A user and a password that hosts share, and what they said of it. Guarded by its owner.
class Account {
public:
    Account(std::string user, Zentar::Secret password)
        : user_(std::move(user)), password_(std::move(password)) {}

    const std::string& user() const { return user_; }
    const Zentar::Secret& password() const { return password_; }

    /// So many of its hosts are still to come or under way; the password goes with the last.
    void AddHost() { ++hosts_left_; }
    void DropHost() {
        if (--hosts_left_ == 0) {
            password_ = Zentar::Secret();
        }
    }

    /// Until a host has accepted it, few may try it at a time, and never more than may still refuse
    /// it.
    bool MayTry(std::size_t most_refusals) const {
        return is_accepted_ ||
               (trying_ < kMostTrying && trying_ + refused_by_.size() < most_refusals);
    }
    /// So many hosts refused it, and none accepted it, that it is tried no more.
    bool IsGivenUp(std::size_t most_refusals) const {
        return !is_accepted_ && refused_by_.size() >= most_refusals;
    }
    const std::vector<std::string>& refused_by() const { return refused_by_; }

    void BeginTry() { ++trying_; }
    void EndTry() { --trying_; }
    void NoteAccepted() { is_accepted_ = true; }
    void NoteRefused(const std::string& host) { refused_by_.push_back(host); }

private:
    static constexpr std::size_t kMostTrying = 3;

    std::string user_;
    Zentar::Secret password_;
    std::size_t hosts_left_ = 0;
    std::size_t trying_ = 0;
    bool is_accepted_ = false;
    std::vector<std::string> refused_by_;
};

}  // namespace fleet
