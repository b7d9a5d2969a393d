#include <CLI/CLI.hpp>
#include <iostream>

#include "cli/command_error.h"
#include "cli/commands.h"
#include "cli/usage_mistake.h"

namespace command {

namespace {

/// As COMMAND --help prints it.
std::string HelpOf(const CLI::App& program, const std::string& name) {
    if (name.empty()) {
        return program.get_formatter()->make_help(&program, program.get_name(),
                                                  CLI::AppFormatMode::Normal);
    }
    CheckCommandName(program, name);
    return program.get_subcommand(name)->help(program.get_name());
}

}  // namespace

void AddHelpCommand(CLI::App& program, int& exit_status) {
    CLI::App* const command = program.add_subcommand("help", "Print the help of a command");
    const auto name = std::make_shared<std::string>();
    command->add_option("COMMAND", *name, "Command to explain [all in short]")->type_name("");
    command->footer("Example:\n  kalvex help inventory");
    command->callback([&program, name, &exit_status] {
        std::cout << HelpOf(program, *name);
        exit_status = kExitDone;
    });
}

}  // namespace command
