#include "cli/event_options.h"

#include <CLI/CLI.hpp>

#include "cli/command_error.h"

namespace command {

namespace {

void ReadSince(const std::string& text, inventory::EventFilter& filter) {
    filter.since = inventory::PointInTimeOf(text);
    if (!filter.since) {
        throw UsageError("--since: \"" + text +
                         "\" is no date; write 2026-03-12 or 2026-03-12T08:15:30+01:00");
    }
}

}  // namespace

void AddEventOptions(CLI::App& app, inventory::EventFilter& filter) {
    app.add_option_function<std::string>(
           "--since", [&filter](const std::string& text) { ReadSince(text, filter); },
           "Print events from this date on (ISO 8601; midnight UTC without a time), and those "
           "whose time cannot be read")
        ->type_name("DATE");
    app.add_option("--last", filter.last, "Print the N newest events only")
        ->check(CLI::PositiveNumber.description(""))
        ->type_name("N");
}

void CheckEventOptions(const inventory::EventFilter& filter,
                       const std::vector<inventory::Section>& sections) {
    if (filter.IsSet() && !inventory::GiveEvents(sections)) {
        throw UsageError(
            "--since and --last are about events, which are not among the sections; add events, or "
            "leave them out");
    }
}

}  // namespace command
