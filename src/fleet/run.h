// Reads many hosts at a time.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "fleet/host_read.h"
#include "fleet/task.h"

namespace fleet {

struct RunOptions {
    ReadingOptions reading;
    std::size_t jobs = 64;
    /// How often a host that failed for a reason that may pass is read again, at the end.
    unsigned retries = 0;
    /// An account that so many hosts refused, and none accepted, is tried no more.
    std::size_t stop_after_refusals = 3;
};

/// What is under way, at one moment.
struct RunState {
    std::size_t hosts = 0;
    std::size_t done = 0;
    std::size_t failed = 0;  ///< of those that are done: not read whole
    std::size_t under_way = 0;
    std::string slowest;  ///< of those under way; empty without one
    std::chrono::milliseconds slowest_for{};
};

/// Takes the documents of a run, from its threads, one at a time.
class DocumentSink {
public:
    virtual ~DocumentSink() = default;
    virtual void Take(const HostEntry& entry, const inventory::Document& document) = 0;
};

class Run {
public:
    /// The options have a handle that can be cancelled. The sink must outlive the run.
    Run(std::vector<Task> tasks, const RunOptions& options, DocumentSink& sink);
    ~Run();
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    /// Starts the threads: fewer than asked for when the system gives no more, at least one. Throws
    /// std::system_error when it gives none.
    void Start();

    /// False when the run goes on after so long.
    bool WaitFor(std::chrono::milliseconds time);

    /// Ends it: what is under way ends soon and is still given to the sink, the rest is not tried.
    void Cancel();

    /// Waits for the threads. Afterwards `rest` has the hosts that were not read to their end
    /// because the run was cancelled, in their order.
    std::vector<HostEntry> Finish();

    RunState State() const;

private:
    struct Attempt {
        Task task;
        unsigned number = 1;
    };
    using Clock = std::chrono::steady_clock;

    void Work();
    /// Waits for an attempt that may begin. False when there is none to come.
    bool Take(Attempt& attempt);
    bool TakeEligible(Attempt& attempt);
    inventory::Document Read(const Attempt& attempt);
    void End(Attempt attempt, const inventory::Document& document);
    bool IsOver() const { return waiting_.empty() && again_.empty() && under_way_.empty(); }
    bool IsCancelled() const { return options_.reading.cancel.IsCancelled(); }

    const RunOptions options_;
    DocumentSink& sink_;
    const std::size_t hosts_;

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Attempt> waiting_;
    std::deque<Attempt> again_;  ///< to be tried again when nothing else is waiting
    std::map<std::size_t, std::pair<std::string, Clock::time_point>> under_way_;  ///< by line
    std::size_t done_ = 0;
    std::size_t failed_ = 0;
    std::vector<HostEntry> rest_;

    std::mutex sink_mutex_;
    std::vector<std::thread> threads_;
};

}  // namespace fleet
