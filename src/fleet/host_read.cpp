#include "fleet/host_read.h"

#include <algorithm>
#include <exception>

#include "common/log/log_control.h"
#include "inventory/host_reading.h"
#include "module/exsi/kalvex.h"

namespace fleet {

using inventory::Document;
using inventory::DocumentFailure;
using Zentar::FailureKind;
using Zentar::ZentarConnection::ConnectionInfo;
using Zentar::ZentarConnection::ConnectionOptions;

namespace {

ConnectionInfo InfoOf(const Task& task) {
    ConnectionInfo info;
    info.host = task.entry.host;
    info.port = task.entry.port;
    info.user = task.account->user();
    info.password = task.account->password().text();
    info.connection_type = task.entry.has_tls ? 1 : 0;
    info.connection_case = 2;  // through the host's own CIM server
    return info;
}

ConnectionOptions OptionsOf(const Task& task, const ReadingOptions& options) {
    ConnectionOptions connection;
    connection.connect_attempts = 1;
    connection.pause_after_last_attempt = false;
    connection.connect_limit = options.connect_limit;
    connection.request_limit = options.request_limit;
    connection.deadline = options.host_limit;
    connection.give_up = true;
    connection.ca_file = task.entry.ca_file;
    connection.fingerprints = task.entry.fingerprints;
    connection.cancel = options.cancel;
    return connection;
}

inventory::HostReading ReadingOf(const Task& task) {
    return {task.entry.host, task.entry.port, task.entry.has_tls ? "https" : "http",
            std::chrono::steady_clock::now()};
}

/// "FOLDER/esx01_5989.log"
std::string LogFileOf(const Task& task, const ReadingOptions& options) {
    if (options.log_folder.empty()) {
        return {};
    }
    std::string name = task.entry.Name();
    std::erase_if(name, [](char character) { return character == '[' || character == ']'; });
    std::ranges::replace(name, ':', '_');
    return options.log_folder + "/" + name + ".log";
}

/// The password is overwritten also when connecting throws.
struct WipedInfo {
    ConnectionInfo info;
    ~WipedInfo() { Zentar::Wipe(info.password); }
};

Zentar::Agentless::Kalvex Connect(const Task& task, const ReadingOptions& options) {
    const WipedInfo wiped{InfoOf(task)};
    return Zentar::Agentless::Kalvex(wiped.info, OptionsOf(task, options));
}

}  // namespace

Document ReadHost(const Task& task, const ReadingOptions& options,
                  const std::function<void()>& answered) {
    const Zentar::LogContext log(task.entry.Name(), LogFileOf(task, options));
    inventory::HostReading reading = ReadingOf(task);
    try {
        Zentar::Agentless::Kalvex host = Connect(task, options);
        reading.NoteConnecting(host.TakeFailures());
        bool has_answered = false;
        for (const inventory::Section& section : options.sections) {
            reading.Read(host, {&section, 1});
            if (!has_answered && reading.HasRead()) {
                has_answered = true;
                answered();
            }
        }
    } catch (const std::exception& error) {
        return Untried(task, options, FailureKind::kCancelled,
                       std::string("this process could not go on: ") + error.what());
    }
    return reading.Finish(options.is_strict);
}

Document Untried(const Task& task, const ReadingOptions& options, FailureKind kind,
                 const std::string& reason) {
    inventory::HostReading reading = ReadingOf(task);
    reading.Skip(options.sections, {"", kind, 0, "", reason});
    return reading.Finish(options.is_strict);
}

bool HasRefused(const Document& document) {
    return std::ranges::find(document.failures, FailureKind::kCredentialsRefused,
                             &DocumentFailure::kind) != document.failures.end();
}

bool MayPass(const Document& document) {
    constexpr FailureKind kPassing[] = {FailureKind::kUnreachable, FailureKind::kTimedOut,
                                        FailureKind::kBusy};
    const auto passes = [&](const DocumentFailure& failure) {
        return std::ranges::find(kPassing, failure.kind) != std::end(kPassing);
    };
    return document.status == inventory::Status::kFailed &&
           std::ranges::any_of(document.failures, passes);
}

}  // namespace fleet
