// The subcommands. Each adds itself to the program, and when it is chosen does its work and sets
// the exit status; it throws CommandError when it cannot.
#pragma once

namespace CLI {
class App;
}

namespace command {

void AddInventoryCommand(CLI::App& program, int& exit_status);
void AddFleetCommand(CLI::App& program, int& exit_status);
void AddSupportedCommand(CLI::App& program, int& exit_status);
void AddFingerprintCommand(CLI::App& program, int& exit_status);
void AddSchemaCommand(CLI::App& program, int& exit_status);
void AddSimulateCommand(CLI::App& program, int& exit_status);
void AddHelpCommand(CLI::App& program, int& exit_status);

}  // namespace command
