#include <CLI/CLI.hpp>
#include <iostream>

#include "cli/command_error.h"
#include "cli/commands.h"
#include "cli/failure_explanation.h"
#include "cli/failure_report.h"
#include "cli/host_session.h"
#include "cli/printer.h"
#include "cli/section_reading.h"

namespace command {

namespace {

constexpr const char* kExample =
    "Examples:\n"
    "  kalvex inventory --simulated\n"
    "  kalvex inventory system packages --host esx01.example.com --user root\n"
    "  kalvex inventory --host esx01.example.com --user root --password-file secret "
    "--format json\n\n"
    "Exit status: 0 every section was read, 1 some failed, 2 wrong usage, 3 none could be read.";

struct InventoryOptions {
    HostOptions host;
    LogOptions log;
    std::vector<std::string> sections;
    std::string format = "text";
};

/// "--simulated system" means the section: a file of that name is given as ./system.
void ResolveSectionAfterSimulated(InventoryOptions& options) {
    if (IsSectionName(options.host.description_file)) {
        options.sections.push_back(options.host.description_file);
        options.host.description_file.clear();
    }
}

/// Reads the sections and prints each; counts how they went.
class InventoryRun {
public:
    InventoryRun(HostSession& session, Printer& printer) : session_(session), printer_(printer) {}

    void Read(const std::vector<Section>& sections) {
        // What the connecting itself met; its consequences come up again in the sections.
        report_.Add("connecting", session_.failures().Take());
        printer_.Begin(session_.name(), session_.port());
        for (const Section& section : sections) {
            const SectionReading reading = ReadOrSkip(section);
            printer_.Print(section.name, reading.content);
            report_.Add(section.name, reading.failures);
            ++counts_[static_cast<std::size_t>(reading.outcome)];
        }
        printer_.End();
    }

    const FailureReport& report() const { return report_; }

    ExitStatus Status() const {
        if (Count(Outcome::kReadInPart) + Count(Outcome::kFailed) == 0) {
            return kExitDone;
        }
        return Count(Outcome::kReadInPart) + Count(Outcome::kRead) == 0 ? kExitNothing
                                                                        : kExitPartly;
    }

private:
    SectionReading ReadOrSkip(const Section& section) {
        if (!refusals_.empty()) {
            return SkipSection(section, refusals_);
        }
        SectionReading reading = ReadSection(section, session_.host(), session_.failures());
        RememberRefusal(reading);
        return reading;
    }

    /// Hosts lock an account after some wrong passwords: one that was refused before anything could
    /// be read is not offered again.
    void RememberRefusal(const SectionReading& reading) {
        const bool nothing_read = Count(Outcome::kRead) + Count(Outcome::kReadInPart) == 0;
        if (reading.outcome == Outcome::kFailed && nothing_read) {
            std::ranges::copy_if(reading.failures, std::back_inserter(refusals_),
                                 [](const Failure& failure) {
                                     return Explain(failure.reason).cause == Cause::kRefused;
                                 });
        }
    }

    std::size_t Count(Outcome outcome) const { return counts_[static_cast<std::size_t>(outcome)]; }

    HostSession& session_;
    Printer& printer_;
    FailureReport report_;
    std::vector<Failure> refusals_;
    std::size_t counts_[3] = {};
};

int RunInventory(InventoryOptions& options) {
    ResolveSectionAfterSimulated(options);
    const std::vector<Section> sections = ChosenSections(options.sections);
    HostSession session(options.host, options.log);
    const auto printer =
        options.format == "json" ? MakeJsonPrinter(std::cout) : MakeTextPrinter(std::cout);
    InventoryRun run(session, *printer);
    run.Read(sections);
    run.report().Write(std::cerr);
    return run.Status();
}

}  // namespace

void AddInventoryCommand(CLI::App& program, int& exit_status) {
    CLI::App* const command =
        program.add_subcommand("inventory", "Read a host and print what it has");
    const auto options = std::make_shared<InventoryOptions>();
    command
        ->add_option("SECTION", options->sections, "Sections to read: " + SectionNames() + " [all]")
        ->type_name("");
    AddHostOptions(*command, options->host);
    command->add_option("--format", options->format, "text for people, json for programs")
        ->check(CLI::IsMember({"text", "json"}).description(""))
        ->type_name("text|json")
        ->capture_default_str();
    AddLogOptions(*command, options->log);
    command->footer(kExample);
    command->callback([options, &exit_status] { exit_status = RunInventory(*options); });
}

}  // namespace command
