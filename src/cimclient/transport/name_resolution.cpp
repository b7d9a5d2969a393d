#include "transport/name_resolution.h"

#include <netdb.h>
#include <signal.h>

#include <cerrno>
#include <condition_variable>
#include <cstring>
#include <memory>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>

#include "common/platform/own_library.h"
#include "transport/transport_error.h"

namespace cimclient {

namespace {

using boost::asio::ip::tcp;
using Endpoints = std::vector<tcp::endpoint>;
using Zentar::FailureKind;
using Zentar::FailurePhase;

[[noreturn]] void FailToResolve(FailureKind kind, std::string reason) {
    throw TransportError{kind, FailurePhase::kResolving, std::move(reason)};
}

std::optional<tcp::endpoint> NumericEndpoint(const std::string& host, std::uint16_t port) {
    boost::system::error_code error;
    const auto address = boost::asio::ip::make_address(host, error);
    return error ? std::nullopt : std::optional(tcp::endpoint(address, port));
}

/// What the system's resolver gave.
struct Found {
    std::string problem;  ///< empty when there is none
    Endpoints endpoints;
};

Found AskSystem(const std::string& host, std::uint16_t port) {
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_protocol = IPPROTO_TCP;
    addrinfo* first = nullptr;
    const int error = getaddrinfo(host.c_str(), nullptr, &hints, &first);
    if (error != 0) {
        return {error == EAI_SYSTEM ? std::strerror(errno) : gai_strerror(error), {}};
    }
    const std::unique_ptr<addrinfo, void (*)(addrinfo*)> owner(first, freeaddrinfo);
    Found found;
    for (const addrinfo* entry = first; entry != nullptr; entry = entry->ai_next) {
        tcp::endpoint endpoint;
        if (entry->ai_addrlen <= endpoint.capacity()) {
            std::memcpy(endpoint.data(), entry->ai_addr, entry->ai_addrlen);
            endpoint.port(port);
            found.endpoints.push_back(endpoint);
        }
    }
    return found;
}

/// A value that one thread waits for, within a limit.
class Meeting {
public:
    /// False when the limit came first.
    template <class IsMet>
    bool Await(const Limit& limit, IsMet is_met) {
        const Zentar::Cancellation::Waker waker(limit.cancellation, [this] {
            const std::lock_guard lock(mutex_);
            changed_.notify_all();
        });
        std::unique_lock lock(mutex_);
        changed_.wait_until(lock, limit.deadline, [&] { return limit.IsCancelled() || is_met(); });
        return !limit.IsCancelled() && is_met();
    }

    template <class Change>
    void Make(Change change) {
        const std::lock_guard lock(mutex_);
        change();
        changed_.notify_all();
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
};

/// Counts the threads that work for the resolver. Never destroyed: they may outlive main().
struct Threads {
    Meeting meeting;
    int count = 0;

    static Threads& OfProcess() {
        static Threads& threads = *new Threads;
        return threads;
    }
};

struct Lookup {
    Meeting meeting;
    std::optional<Found> found;
};

[[noreturn]] void FailAtLimit(const Limit& limit) {
    if (limit.IsCancelled()) {
        FailToResolve(FailureKind::kCancelled, "cancelled");
    }
    FailToResolve(FailureKind::kTimedOut, "The name was not resolved in time.");
}

void TakePlace(const Limit& limit) {
    Threads& threads = Threads::OfProcess();
    bool taken = false;
    const bool is_free = threads.meeting.Await(limit, [&] {
        if (!taken && threads.count < kMostResolverThreads) {
            taken = true;
            ++threads.count;
        }
        return taken;
    });
    if (!is_free) {
        if (taken) {
            threads.meeting.Make([&] { --threads.count; });
        }
        FailAtLimit(limit);
    }
}

void ReturnPlace() {
    Threads& threads = Threads::OfProcess();
    threads.meeting.Make([&] { --threads.count; });
}

/// The application's signals are for its own threads.
class SignalsBlocked {
public:
    SignalsBlocked() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before_);
    }
    ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;

private:
    sigset_t before_;
};

void Start(const std::shared_ptr<Lookup>& lookup, const std::string& host, std::uint16_t port) {
    const SignalsBlocked blocked;
    std::thread([lookup, host, port] {
        Found found;
        try {
            found = AskSystem(host, port);
        } catch (const std::bad_alloc&) {
            found = {"There is too little memory.", {}};
        }
        lookup->meeting.Make([&] { lookup->found = std::move(found); });
        ReturnPlace();
    }).detach();
}

Found AskOnThread(const std::string& host, std::uint16_t port, const Limit& limit) {
    Zentar::KeepOwnLibrary();
    const auto lookup = std::make_shared<Lookup>();
    TakePlace(limit);
    try {
        Start(lookup, host, port);
    } catch (const std::system_error& e) {
        ReturnPlace();
        return {std::string("No thread could be started: ") + e.what(), {}};
    }
    if (!lookup->meeting.Await(limit, [&] { return lookup->found.has_value(); })) {
        FailAtLimit(limit);
    }
    return std::move(*lookup->found);
}

}  // namespace

Endpoints Resolve(const std::string& host, unsigned port, const Limit& limit) {
    const auto number = static_cast<std::uint16_t>(port);
    if (const auto endpoint = NumericEndpoint(host, number)) {
        return {*endpoint};
    }
    Found found =
        limit.cancellation != nullptr ? AskOnThread(host, number, limit) : AskSystem(host, number);
    if (!found.problem.empty() || found.endpoints.empty()) {
        FailToResolve(FailureKind::kHostUnknown, found.problem);
    }
    return std::move(found.endpoints);
}

}  // namespace cimclient
