#include "fleet/run.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace fleet {

using inventory::Document;
using inventory::Status;
using Zentar::FailureKind;

namespace {

std::string NotTriedBecauseRefused(const Account& account) {
    std::string text = "not tried, because the account was refused by ";
    for (std::size_t i = 0; i < account.refused_by().size(); ++i) {
        text += (i == 0 ? "" : ", ") + account.refused_by()[i];
    }
    return text + " and accepted by none";
}

bool WasCancelled(const Document& document) {
    return std::ranges::find(document.failures, FailureKind::kCancelled,
                             &inventory::DocumentFailure::kind) != document.failures.end();
}

}  // namespace

Run::Run(std::vector<Task> tasks, const RunOptions& options, DocumentSink& sink)
    : options_(options), sink_(sink), hosts_(tasks.size()) {
    for (Task& task : tasks) {
        task.account->AddHost();
        waiting_.push_back({std::move(task)});
    }
}

Run::~Run() {
    Cancel();
    Finish();
}

void Run::Start() {
    const std::size_t count = std::min(std::max<std::size_t>(options_.jobs, 1), hosts_);
    for (std::size_t i = 0; i < count; ++i) {
        try {
            threads_.emplace_back([this] { Work(); });
        } catch (const std::system_error&) {
            if (threads_.empty()) {
                throw;
            }
            return;
        }
    }
}

bool Run::WaitFor(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, time, [this] { return IsOver() || IsCancelled(); });
}

void Run::Cancel() {
    {
        const std::lock_guard lock(mutex_);
        options_.reading.cancel.Cancel();
    }
    changed_.notify_all();
}

std::vector<HostEntry> Run::Finish() {
    for (std::thread& thread : threads_) {
        thread.join();
    }
    threads_.clear();
    for (std::deque<Attempt>* attempts : {&waiting_, &again_}) {
        for (const Attempt& attempt : *attempts) {
            rest_.push_back(attempt.task.entry);
        }
        attempts->clear();
    }
    std::ranges::sort(rest_, {}, &HostEntry::line);
    return std::exchange(rest_, {});
}

RunState Run::State() const {
    const std::lock_guard lock(mutex_);
    RunState state{hosts_, done_, failed_, under_way_.size(), {}, {}};
    const auto slowest = std::ranges::min_element(
        under_way_, {}, [](const auto& host) { return host.second.second; });
    if (slowest != under_way_.end()) {
        state.slowest = slowest->second.first;
        state.slowest_for = std::chrono::duration_cast<std::chrono::milliseconds>(
            Clock::now() - slowest->second.second);
    }
    return state;
}

void Run::Work() {
    Attempt attempt;
    while (Take(attempt)) {
        const Document document = Read(attempt);
        End(std::move(attempt), document);
    }
}

bool Run::Take(Attempt& attempt) {
    std::unique_lock lock(mutex_);
    for (;;) {
        if (IsCancelled() || IsOver()) {
            return false;
        }
        if (waiting_.empty() && under_way_.empty()) {
            waiting_.swap(again_);
        }
        if (TakeEligible(attempt)) {
            return true;
        }
        changed_.wait(lock);
    }
}

bool Run::TakeEligible(Attempt& attempt) {
    const auto may_begin = [this](const Attempt& waiting) {
        const Account& account = *waiting.task.account;
        return account.MayTry(options_.stop_after_refusals) ||
               account.IsGivenUp(options_.stop_after_refusals);
    };
    const auto found = std::ranges::find_if(waiting_, may_begin);
    if (found == waiting_.end()) {
        return false;
    }
    attempt = std::move(*found);
    waiting_.erase(found);
    attempt.task.account->BeginTry();
    under_way_[attempt.task.entry.line] = {attempt.task.entry.Name(), Clock::now()};
    return true;
}

Document Run::Read(const Attempt& attempt) {
    Account& account = *attempt.task.account;
    {
        const std::lock_guard lock(mutex_);
        if (account.IsGivenUp(options_.stop_after_refusals)) {
            return Untried(attempt.task, options_.reading, FailureKind::kCredentialsRefused,
                           NotTriedBecauseRefused(account));
        }
    }
    return ReadHost(attempt.task, options_.reading, [&] {
        const std::lock_guard lock(mutex_);
        account.NoteAccepted();
        changed_.notify_all();
    });
}

void Run::End(Attempt attempt, const Document& document) {
    Account& account = *attempt.task.account;
    const HostEntry entry = attempt.task.entry;
    bool is_final = true;
    {
        const std::lock_guard lock(mutex_);
        account.EndTry();
        if (HasRefused(document) && !account.IsGivenUp(options_.stop_after_refusals)) {
            account.NoteRefused(entry.Name());
        }
        if (IsCancelled() && WasCancelled(document)) {
            rest_.push_back(entry);
        }
        is_final = IsCancelled() || attempt.number > options_.retries || !MayPass(document);
        if (is_final) {
            account.DropHost();
        } else {
            ++attempt.number;
            again_.push_back(std::move(attempt));
        }
    }
    if (is_final) {
        const std::lock_guard lock(sink_mutex_);
        sink_.Take(entry, document);
    }
    const std::lock_guard lock(mutex_);
    under_way_.erase(entry.line);
    done_ += is_final ? 1 : 0;
    failed_ += is_final && document.status != Status::kOk ? 1 : 0;
    changed_.notify_all();
}

}  // namespace fleet
