#include "fleet/summary.h"

#include <algorithm>
#include <iomanip>
#include <numeric>
#include <ostream>
#include <set>

#include "inventory/failure_meanings.h"
#include "outputs/json/json_writer.h"
#include "outputs/text/display_text.h"

namespace fleet {

using inventory::Status;

namespace {

constexpr Status kStatuses[] = {Status::kOk, Status::kPartial, Status::kFailed};
constexpr std::size_t kMostNamed = 5;
constexpr std::size_t kWidestName = 60;

std::string Shortened(const std::vector<std::string>& hosts) {
    std::string text;
    for (std::size_t i = 0; i < std::min(hosts.size(), kMostNamed); ++i) {
        text += (i == 0 ? "" : ", ") + outputs::DisplayText(hosts[i], kWidestName);
    }
    const std::size_t more = hosts.size() - std::min(hosts.size(), kMostNamed);
    return more == 0 ? text : text + " and " + std::to_string(more) + " more";
}

double InSeconds(std::chrono::milliseconds time) {
    return std::chrono::duration<double>(time).count();
}

}  // namespace

void Summary::Add(const HostEntry& entry, const inventory::Document& document) {
    ++statuses_[static_cast<std::size_t>(document.status)];
    if (document.status == Status::kOk) {
        return;
    }
    std::set<Zentar::FailureKind> kinds;
    for (const inventory::DocumentFailure& failure : document.failures) {
        kinds.insert(failure.kind);
    }
    for (const Zentar::FailureKind kind : kinds) {
        failures_[kind].push_back(entry.Name());
    }
}

std::size_t Summary::Taken() const {
    return std::accumulate(statuses_.begin(), statuses_.end(), std::size_t{0});
}

void Summary::WriteText(std::ostream& out) const {
    const std::size_t total = Taken() + rest_;
    out << total << (total == 1 ? " host: " : " hosts: ");
    for (const Status status : kStatuses) {
        out << Count(status) << ' ' << inventory::WordOf(status) << ", ";
    }
    out << rest_ << " not read; " << std::fixed << std::setprecision(1) << InSeconds(duration_)
        << " s\n";
    for (const auto& [kind, hosts] : failures_) {
        out << "  " << inventory::MeaningOf(kind).meaning << " (" << hosts.size()
            << "): " << Shortened(hosts) << '\n';
    }
    out.flush();
}

void Summary::WriteJson(std::ostream& out) const {
    {
        outputs::JsonWriter json(out, outputs::JsonLayout::kIndented);
        json.OpenObject();
        json.Member("schema", "kalvex-fleet/1");
        json.Member("hosts", static_cast<std::int64_t>((Taken() + rest_)));
        for (const Status status : kStatuses) {
            json.Member(inventory::WordOf(status), static_cast<std::int64_t>(Count(status)));
        }
        json.Member("not_read", static_cast<std::int64_t>(rest_));
        json.Member("seconds", InSeconds(duration_));
        json.Key("failures");
        json.OpenObject();
        for (const auto& [kind, hosts] : failures_) {
            json.Key(WordOf(kind));
            json.OpenArray();
            for (const std::string& host : hosts) {
                json.Value(host);
            }
            json.CloseArray();
        }
        json.CloseObject();
        json.CloseObject();
    }
    out << '\n';
    out.flush();
}

}  // namespace fleet
