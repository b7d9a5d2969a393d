#include <CLI/CLI.hpp>
#include <iostream>

#include "cli/command_error.h"
#include "cli/commands.h"
#include "cli/event_options.h"
#include "cli/failure_report.h"
#include "cli/host_session.h"
#include "cli/output_options.h"
#include "cli/section_choice.h"
#include "inventory/host_reading.h"

namespace command {

namespace {

constexpr const char* kInventoryExample =
    "Examples:\n"
    "  kalvex inventory --simulated\n"
    "  kalvex inventory system packages --host esx01.example.com --user root\n"
    "  kalvex inventory --host esx01.example.com --user root --password-file secret "
    "--format json\n"
    "  kalvex inventory --host esx01.example.com --user root --format csv --output-dir esx01\n\n"
    "Exit status: 0 every section was read, 1 some failed, 2 wrong usage, 3 none could be read, "
    "130 interrupted, 143 terminated.";

struct InventoryOptions {
    HostOptions host;
    LogOptions log;
    std::vector<std::string> sections;
    OutputOptions output;
    inventory::EventFilter events;
    bool is_strict = false;
};

/// "--simulated system" means the section: a file of that name is given as ./system.
void ResolveSectionAfterSimulated(InventoryOptions& options) {
    if (NamesSections(options.host.description_file)) {
        options.sections.push_back(options.host.description_file);
        options.host.description_file.clear();
    }
}

/// Whatever the reading gave, its status says.
ExitStatus ExitStatusOf(inventory::Status status) {
    switch (status) {
        case inventory::Status::kOk:
            return kExitDone;
        case inventory::Status::kFailed:
            return kExitNothing;
        default:
            return kExitPartly;
    }
}

inventory::Document Read(HostSession& session, const std::vector<inventory::Section>& sections,
                         const InventoryOptions& options) {
    inventory::HostReading reading(session.name(), session.port(), session.transport(),
                                   session.begun());
    reading.NoteConnecting(session.connecting_failures());
    reading.Read(session.host(), sections, [&](const inventory::Section& section, auto number) {
        session.progress().Show(std::string("reading ") + section.name + " (" +
                                std::to_string(number) + " of " + std::to_string(sections.size()) +
                                ")");
    });
    session.progress().Hide();
    if (reading.RanOutOfMemory()) {
        std::cerr << kTooLittleMemory;
    }
    return reading.Finish(options.is_strict);
}

int RunInventory(InventoryOptions& options) {
    ResolveSectionAfterSimulated(options);
    const std::vector<inventory::Section> sections = ChosenSections(options.sections);
    CheckOutputOptions(options.output, sections);
    CheckEventOptions(options.events, sections);
    HostSession session(options.host, options.log);
    inventory::Document document = Read(session, sections, options);
    KeepEvents(options.events, document);
    const std::string problem = WriteOutput(document, options.output);
    FailureReport report;
    report.Add(session.Connecting(), document);
    report.Write(std::cerr);
    const int status = session.interruption().StatusOr(ExitStatusOf(document.status));
    if (!problem.empty()) {
        throw CommandError(static_cast<ExitStatus>(status == kExitDone ? kExitPartly : status),
                           problem);
    }
    return status;
}

}  // namespace

void AddInventoryCommand(CLI::App& program, int& exit_status) {
    CLI::App* const command =
        program.add_subcommand("inventory", "Read a host and print what it has");
    const auto options = std::make_shared<InventoryOptions>();
    command
        ->add_option("SECTION", options->sections,
                     "Sections to read: " + inventory::SectionNames() + ", or all [all]")
        ->type_name("");
    AddHostOptions(*command, options->host);
    AddOutputOptions(*command, options->output);
    AddEventOptions(*command, options->events);
    command->add_flag("--strict", options->is_strict,
                      "Count as a failure what the host answers that it does not have");
    AddLogOptions(*command, options->log);
    command->footer(kInventoryExample);
    command->callback([options, &exit_status] { exit_status = RunInventory(*options); });
}

}  // namespace command
