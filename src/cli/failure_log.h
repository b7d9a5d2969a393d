// Listens to the module's log for the reasons of failures, which it reports nowhere else.
#pragma once

#include <string>
#include <vector>

namespace command {

struct Failure {
    std::string class_name;  ///< the class whose instances were asked for; may be empty
    std::string reason;      ///< as the module logged it; empty when the host gave none
    bool whole_request;      ///< a request or connection failed, not one value or association
    bool operator==(const Failure&) const = default;
};

/// While it lives it is the log's sink: remembers failures, and hands the messages up to
/// `forwarded_level` on to the log's destination. One at a time may live.
class FailureLog {
public:
    explicit FailureLog(unsigned forwarded_level);
    ~FailureLog();
    FailureLog(const FailureLog&) = delete;
    FailureLog& operator=(const FailureLog&) = delete;

    /// The distinct failures since the last call, in their order.
    std::vector<Failure> Take();

private:
    void Notice(unsigned level, const std::string& text);

    std::string class_name_;
    std::vector<Failure> failures_;
};

}  // namespace command
