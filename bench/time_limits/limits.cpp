#include "time_limits/limits.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <thread>

namespace time_limits {

namespace {

using Clock = std::chrono::steady_clock;
using Zentar::CancelHandle;
using Zentar::Failure;
using Zentar::FailureKind;
using Zentar::FailurePhase;
using Zentar::Agentless::Kalvex;
using ZentarConnection::ConnectionOptions;

/// Ends what no limit ended.
constexpr milliseconds kFar = std::chrono::seconds(10);

ConnectionOptions FarLimits() {
    ConnectionOptions options;
    options.connect_attempts = 2;
    options.connect_pause = kFar;
    options.pause_after_last_attempt = false;
    options.connect_limit = kFar;
    options.request_limit = kFar;
    return options;
}

bool IsEnd(const Failure& failure, FailureKind kind, FailurePhase phase) {
    return failure.kind == kind && (phase == FailurePhase::kNone || failure.phase == phase);
}

bool HasEnd(const std::vector<Failure>& failures, FailureKind kind, FailurePhase phase) {
    return std::any_of(failures.begin(), failures.end(),
                       [&](const Failure& failure) { return IsEnd(failure, kind, phase); });
}

void RequireEnd(const std::vector<Failure>& failures, FailureKind kind, const Stall& stall) {
    if (HasEnd(failures, kind, stall.phase)) {
        return;
    }
    std::string met = std::string(stall.how) + ": expected " + WordOf(kind) + " while " +
                      WordsOf(stall.phase) + ", met";
    for (const Failure& failure : failures) {
        met += std::string(" [") + WordOf(failure.kind) + " while " + WordsOf(failure.phase) +
               ": " + failure.text + "]";
    }
    throw std::logic_error(met);
}

template <class Call>
Milliseconds TimeOf(Call call) {
    const auto begin = Clock::now();
    call();
    return Clock::now() - begin;
}

template <class Record>
auto ListOf(int (Kalvex::*get)(std::vector<Record>&)) {
    return [get](Kalvex& host) {
        std::vector<Record> records;
        (host.*get)(records);
    };
}

void ReadPackages(Kalvex& host) { ListOf (&Kalvex::GetInstalledPackages)(host); }

/// Reads one list after the other until one ends for the reason. Later ones must cost nothing.
std::vector<Failure> ReadUntil(Kalvex& host, FailureKind kind) {
    const auto given_up = Clock::now() + kFar;
    for (;;) {
        ReadPackages(host);
        ListOf (&Kalvex::GetIpmiRecord)(host);
        ListOf (&Kalvex::GetVMwarePrivilege)(host);
        ListOf (&Kalvex::GetEthernetPorts)(host);
        host.IsUnSpportedEXSIVersion();
        auto failures = host.TakeFailures().failures;
        if (HasEnd(failures, kind, FailurePhase::kNone) || Clock::now() > given_up) {
            return failures;
        }
    }
}

void Prepare(const Scene& scene, Kalvex& host) {
    if (scene.prepare) {
        scene.prepare(host);
    }
}

/// From the construction on.
Milliseconds TimeOfObject(const Scene& scene, const ConnectionOptions& options, FailureKind kind,
                          const Stall& stall) {
    std::vector<Failure> failures;
    const Milliseconds taken = TimeOf([&] {
        Kalvex host(scene.info, options);
        Prepare(scene, host);
        failures = ReadUntil(host, kind);
    });
    RequireEnd(failures, kind, stall);
    return taken;
}

Milliseconds OfConnectLimit(const Stall& stall, milliseconds limit) {
    const Scene scene = stall.make(limit);
    ConnectionOptions options = FarLimits();
    options.connect_attempts = 1;
    options.give_up = true;  // the second of the object's connections
    options.connect_limit = limit;
    std::vector<Failure> failures;
    const Milliseconds taken =
        TimeOf([&] { failures = Kalvex(scene.info, options).TakeFailures().failures; });
    RequireEnd(failures, FailureKind::kTimedOut, stall);
    return taken;
}

Milliseconds OfRequestLimit(const Stall& stall, milliseconds limit) {
    const Scene scene = stall.make(limit);
    ConnectionOptions options = FarLimits();
    options.request_limit = limit;
    Kalvex host(scene.info, options);
    Prepare(scene, host);
    const Milliseconds taken = TimeOf([&] { ReadPackages(host); });
    RequireEnd(host.TakeFailures().failures, FailureKind::kTimedOut, stall);
    return taken;
}

Milliseconds OfDeadline(const Stall& stall, milliseconds limit) {
    ConnectionOptions options = FarLimits();
    options.deadline = limit;
    return TimeOfObject(stall.make(limit), options, FailureKind::kDeadline, stall);
}

/// Calls after the time, from another thread.
template <class Call>
std::jthread After(milliseconds time, Call call) {
    return std::jthread([until = Clock::now() + time, call] {
        std::this_thread::sleep_until(until);
        call();
    });
}

Milliseconds OfHandle(const Stall& stall, milliseconds limit) {
    const Scene scene = stall.make(limit);
    ConnectionOptions options = FarLimits();
    options.cancel = CancelHandle::Make();
    const std::jthread canceller = After(limit, [&] { options.cancel.Cancel(); });
    return TimeOfObject(scene, options, FailureKind::kCancelled, stall);
}

Milliseconds OfCancel(const Stall& stall, milliseconds limit) {
    const Scene scene = stall.make(limit);
    Kalvex host(scene.info, FarLimits());
    Prepare(scene, host);
    std::vector<Failure> failures;
    const Milliseconds taken = TimeOf([&] {
        const std::jthread canceller = After(limit, [&] { host.Cancel(); });
        failures = ReadUntil(host, FailureKind::kCancelled);
    });
    RequireEnd(failures, FailureKind::kCancelled, stall);
    return taken;
}

}  // namespace

const std::vector<Limit>& Limits() {
    static const std::vector<Limit> limits = {
        {"connect limit", [](Moment moment) { return moment == Moment::kConnecting; },
         OfConnectLimit},
        {"request limit", [](Moment moment) { return moment == Moment::kAsking; }, OfRequestLimit},
        {"deadline", [](Moment) { return true; }, OfDeadline},
        {"cancel handle", [](Moment) { return true; }, OfHandle},
        // It takes an object, which is there once it is constructed.
        {"Kalvex::Cancel",
         [](Moment moment) { return moment == Moment::kAsking || moment == Moment::kWorking; },
         OfCancel},
    };
    return limits;
}

}  // namespace time_limits
