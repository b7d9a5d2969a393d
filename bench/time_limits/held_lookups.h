// A resolver that does not answer: this program's own getaddrinfo, in place of the system's.
#pragma once

namespace time_limits {

/// A name that stands for 127.0.0.1. All others are the system's.
inline constexpr const char* kOwnName = "host.example";

/// Lookups of kOwnName, which are answered at once but for one. One object at a time.
class HeldLookups {
public:
    HeldLookups() = default;
    /// Releases the lookup that is held, and returns when it has left.
    ~HeldLookups();
    HeldLookups(const HeldLookups&) = delete;
    HeldLookups& operator=(const HeldLookups&) = delete;

    /// Holds the next lookup.
    void HoldNext();
};

}  // namespace time_limits
