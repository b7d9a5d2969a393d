#include "outputs/text/document_lines.h"

#include <algorithm>
#include <cstdio>
#include <string_view>
#include <vector>

#include "inventory/failure_meanings.h"
#include "outputs/text/cell_text.h"
#include "schema/host_kinds.h"

namespace outputs {

namespace {

using inventory::Document;
using inventory::SectionResult;
using inventory::Status;

/// Of a section with one record; empty when it is not known.
std::string ValueOf(const Document& document, const schema::RecordKind& kind, const char* field) {
    const SectionResult* const section = document.Find(kind);
    if (section == nullptr) {
        return {};
    }
    CellText text;
    return std::string(text.Of(section->records->At(0, PlaceOf(kind, field))));
}

void AppendPart(std::string& line, std::string_view between, std::string_view part) {
    if (!part.empty()) {
        line.append(line.empty() ? "" : between).append(part);
    }
}

std::string AddressOf(const Document& document) {
    const bool is_ipv6 = document.host.find(':') != std::string::npos;
    return (is_ipv6 ? "[" + document.host + "]" : document.host) + ":" +
           std::to_string(document.port);
}

/// Products are often named with the manufacturer, be it in short.
std::string MachineOf(const Document& document) {
    std::string product = ValueOf(document, schema::kSystem, "product_name");
    std::string machine = ValueOf(document, schema::kSystem, "manufacturer");
    const std::string first_word = machine.substr(0, machine.find(' ')) + ' ';
    if (product.starts_with(first_word)) {
        return product;
    }
    AppendPart(machine, " ", product);
    return machine;
}

std::string HypervisorOf(const Document& document) {
    std::string hypervisor = ValueOf(document, schema::kOs, "name");
    AppendPart(hypervisor, " ", ValueOf(document, schema::kOs, "version"));
    const std::string build = ValueOf(document, schema::kOs, "build_number");
    AppendPart(hypervisor, " ", build.empty() ? "" : "build " + build);
    return hypervisor;
}

/// Sections of which the same is to be said.
struct Group {
    std::string_view what;
    std::optional<Zentar::FailureKind> cause;
    std::string names;
};

const char* WhatOf(Status status) {
    switch (status) {
        case Status::kOk:
            return "";
        case Status::kPartial:
            return "in part";
        case Status::kUnavailable:
        case Status::kFailed:
            return "not";
        case Status::kSkipped:
            return "not asked for";
    }
    return "";
}

std::vector<Group> GroupsOf(const Document& document) {
    std::vector<Group> groups;
    for (const SectionResult& section : document.sections) {
        if (section.status == Status::kOk) {
            continue;
        }
        const std::string_view what = WhatOf(section.status);
        auto group = std::ranges::find_if(groups, [&](const Group& known) {
            return known.what == what && known.cause == section.cause;
        });
        if (group == groups.end()) {
            group = groups.insert(groups.end(), {what, section.cause, {}});
        }
        AppendPart(group->names, ", ", section.kind().name);
    }
    return groups;
}

std::string CountOf(const Document& document) {
    const std::size_t all = document.sections.size();
    const auto read = std::ranges::count_if(document.sections, &SectionResult::WasRead);
    return (static_cast<std::size_t>(read) == all ? "" : std::to_string(read) + " of ") +
           std::to_string(all) + (all == 1 ? " section" : " sections");
}

/// "1.5 s", or "45 ms".
std::string DurationText(std::chrono::milliseconds duration) {
    if (duration < std::chrono::seconds(1)) {
        return std::to_string(duration.count()) + " ms";
    }
    char text[32];
    std::snprintf(text, sizeof text, "%.1f s", std::chrono::duration<double>(duration).count());
    return text;
}

}  // namespace

std::string HostLine(const Document& document) {
    std::string line = AddressOf(document);
    AppendPart(line, "  ", MachineOf(document));
    AppendPart(line, "  ", HypervisorOf(document));
    return line;
}

std::string ReadingLine(const Document& document) {
    std::string line = "Read " + CountOf(document) + " in " + DurationText(document.duration);
    for (const Group& group : GroupsOf(document)) {
        line.append("; ").append(group.what).append(": ").append(group.names);
        if (group.cause) {
            line.append(" (").append(inventory::MeaningOf(*group.cause).meaning).append(")");
        }
    }
    return line + ".";
}

}  // namespace outputs
