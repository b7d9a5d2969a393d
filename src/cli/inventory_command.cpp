#include <CLI/CLI.hpp>
#include <iostream>

#include "cli/command_error.h"
#include "cli/commands.h"
#include "cli/failure_report.h"
#include "cli/host_session.h"
#include "cli/inventory_run.h"
#include "cli/printer.h"
#include "cli/section_choice.h"

namespace command {

namespace {

constexpr const char* kInventoryExample =
    "Examples:\n"
    "  kalvex inventory --simulated\n"
    "  kalvex inventory system packages --host esx01.example.com --user root\n"
    "  kalvex inventory --host esx01.example.com --user root --password-file secret "
    "--format json\n\n"
    "Exit status: 0 every section was read, 1 some failed, 2 wrong usage, 3 none could be read, "
    "130 interrupted, 143 terminated.";

struct InventoryOptions {
    HostOptions host;
    LogOptions log;
    std::vector<std::string> sections;
    std::string format = "text";
};

/// "--simulated system" means the section: a file of that name is given as ./system.
void ResolveSectionAfterSimulated(InventoryOptions& options) {
    if (inventory::FindSection(options.host.description_file) != nullptr) {
        options.sections.push_back(options.host.description_file);
        options.host.description_file.clear();
    }
}

int RunInventory(InventoryOptions& options) {
    ResolveSectionAfterSimulated(options);
    const std::vector<inventory::Section> sections = ChosenSections(options.sections);
    HostSession session(options.host, options.log);
    const auto printer =
        options.format == "json" ? MakeJsonPrinter(std::cout) : MakeTextPrinter(std::cout);
    FailureReport report;
    report.Add(session.Connecting(), session.connecting_failures());
    printer->Begin(session.name(), session.port(), session.connecting_failures());
    InventoryRun run(session.host(), *printer, session.progress(), report);
    run.Read(sections);
    printer->End();
    report.Write(std::cerr);
    if (run.RanOutOfMemory()) {
        std::cerr << kTooLittleMemory;
    }
    return session.interruption().StatusOr(run.Status());
}

}  // namespace

void AddInventoryCommand(CLI::App& program, int& exit_status) {
    CLI::App* const command =
        program.add_subcommand("inventory", "Read a host and print what it has");
    const auto options = std::make_shared<InventoryOptions>();
    command
        ->add_option("SECTION", options->sections,
                     "Sections to read: " + inventory::SectionNames() + " [all]")
        ->type_name("");
    AddHostOptions(*command, options->host);
    command->add_option("--format", options->format, "text for people, json for programs")
        ->check(CLI::IsMember({"text", "json"}).description(""))
        ->type_name("text|json")
        ->capture_default_str();
    AddLogOptions(*command, options->log);
    command->footer(kInventoryExample);
    command->callback([options, &exit_status] { exit_status = RunInventory(*options); });
}

}  // namespace command
