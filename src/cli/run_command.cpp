#include "cli/run_command.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <iostream>
#include <new>

#include "cli/command_error.h"
#include "cli/commands.h"
#include "cli/usage_mistake.h"
#include "outputs/text/display_text.h"

namespace command {

using outputs::DisplayText;

namespace {

constexpr const char* kExample =
    "Example:\n"
    "  kalvex inventory --simulated\n\n"
    "kalvex help COMMAND says more about each command, and so does kalvex COMMAND --help.";

int Fail(const std::string& message, int status) {
    std::cerr << "kalvex: " << DisplayText(message) << std::endl;
    return status;
}

int FinishParsing(const CLI::App& program, const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) {
        return program.exit(error);
    }
    return Fail(DescribeMistake(program, error), kExitUsage);
}

/// What was printed may still fail to arrive.
int AfterOutput(int status) {
    if (std::cout.flush()) {
        return status;
    }
    return Fail("standard output could not be written to its end; is the disk full?",
                status == kExitDone ? kExitPartly : status);
}

int Run(int argc, const char* const* argv) {
    int exit_status = kExitDone;
    CLI::App program(
        "Reads the inventory of VMware ESXi hosts without installing anything on them.", "kalvex");
    program.set_version_flag("-V,--version", "kalvex " KALVEX_VERSION,
                             "Print the version and exit");
    program.set_help_flag("-h,--help", "Print this help and exit");
    program.require_subcommand(1);
    program.footer(kExample);
    AddInventoryCommand(program, exit_status);
    AddFleetCommand(program, exit_status);
    AddSupportedCommand(program, exit_status);
    AddFingerprintCommand(program, exit_status);
    AddSchemaCommand(program, exit_status);
    AddSimulateCommand(program, exit_status);
    AddHelpCommand(program, exit_status);
    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return AfterOutput(FinishParsing(program, error));
    }
    return AfterOutput(exit_status);
}

}  // namespace

int FailForMemory() {
    std::fputs(kTooLittleMemory, stderr);
    return kExitNothing;
}

int RunCommand(int argc, const char* const* argv) {
    try {
        return Run(argc, argv);
    } catch (const CommandError& error) {
        return Fail(error.what(), error.status());
    } catch (const std::bad_alloc&) {
        return FailForMemory();
    } catch (const std::exception& error) {
        return Fail(std::string("stopped by an unexpected failure: ") + error.what(), kExitNothing);
    } catch (...) {
        return Fail("stopped by an unexpected failure of unknown kind", kExitNothing);
    }
}

}  // namespace command
