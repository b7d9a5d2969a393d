#include "net/name_resolution.h"

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
#include "common/platform/system_words.h"
#include "net/network_error.h"

namespace cimclient {

namespace {

using boost::asio::ip::tcp;
using Endpoints = std::vector<tcp::endpoint>;
using Zentar::FailureKind;
using Zentar::FailurePhase;

[[noreturn]] void FailToResolve(FailureKind kind, std::string reason) {
    throw NetworkError{kind, FailurePhase::kResolving, std::move(reason)};
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
        return {error == EAI_SYSTEM ? Zentar::SystemWords(errno) : gai_strerror(error), {}};
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

/// The threads that work for the resolver, and what they have found. Never destroyed: they may
/// outlive main().
class Threads {
public:
    static Threads& OfProcess() {
        static Threads& threads = *new Threads;
        return threads;
    }

    /// Waits until `is_met`, and does `then` in the same moment. Throws at the limit.
    template <class IsMet, class Then>
    void Await(const Limit& limit, IsMet is_met, Then then) {
        const Zentar::Cancellation::Waker waker(limit.cancellation, [this] { Change([] {}); });
        std::unique_lock lock(mutex_);
        changed_.wait_until(lock, limit.deadline, [&] { return limit.IsCancelled() || is_met(); });
        if (limit.IsCancelled()) {
            FailToResolve(FailureKind::kCancelled, "cancelled");
        }
        if (!is_met()) {
            FailToResolve(FailureKind::kTimedOut, "The name was not resolved in time.");
        }
        then();
    }

    template <class Action>
    void Change(Action action) {
        const std::lock_guard lock(mutex_);
        action();
        changed_.notify_all();
    }

    int count = 0;

private:
    std::mutex mutex_;
    std::condition_variable changed_;
};

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

using Lookup = std::shared_ptr<std::optional<Found>>;

void Start(const Lookup& lookup, const std::string& host, std::uint16_t port) {
    const SignalsBlocked blocked;
    std::thread([lookup, host, port] {
        Found found;
        try {
            found = AskSystem(host, port);
        } catch (const std::bad_alloc&) {
            found = {"There is too little memory.", {}};
        }
        Threads& threads = Threads::OfProcess();
        threads.Change([&] {
            *lookup = std::move(found);
            --threads.count;
        });
    }).detach();
}

Found AskOnThread(const std::string& host, std::uint16_t port, const Limit& limit) {
    Zentar::KeepOwnLibrary();
    Threads& threads = Threads::OfProcess();
    const auto lookup = std::make_shared<std::optional<Found>>();
    threads.Await(
        limit, [&] { return threads.count < kMostResolverThreads; }, [&] { ++threads.count; });
    try {
        Start(lookup, host, port);
    } catch (const std::system_error& e) {
        threads.Change([&] { --threads.count; });
        return {std::string("No thread could be started: ") + e.what(), {}};
    }
    Found found;
    threads.Await(
        limit, [&] { return lookup->has_value(); }, [&] { found = std::move(**lookup); });
    return found;
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
