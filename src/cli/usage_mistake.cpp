#include "cli/usage_mistake.h"

#include <CLI/CLI.hpp>

namespace command {

namespace {

std::string CommandNames(const CLI::App& program) {
    std::string names;
    for (const CLI::App* command : program.get_subcommands({})) {
        names += (names.empty() ? "" : ", ") + command->get_name();
    }
    return names;
}

std::string MissingCommand(const CLI::App& program) {
    const auto unknown = program.remaining();
    const std::string what =
        unknown.empty() ? "no command" : "unknown command \"" + unknown.front() + "\"";
    return what + "; choose among " + CommandNames(program);
}

/// The library counts values: "--port: At Most 1 required but received 2".
std::string WrongNumberOfValues(const std::string& complaint) {
    const std::string option = complaint.substr(0, complaint.find(':'));
    const bool too_many = complaint.find("received") != std::string::npos;
    return option + (too_many ? " is given more than once; give it once"
                              : " needs a value; write it after the option");
}

std::string Complaint(const CLI::App& program, const CLI::ParseError& error) {
    if (program.get_subcommands().empty()) {
        return MissingCommand(program);
    }
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) {
        return WrongNumberOfValues(error.what());
    }
    return error.what();
}

/// The help of the command that the arguments chose.
std::string HelpCall(const CLI::App& program) {
    const auto chosen = program.get_subcommands();
    return "kalvex " + (chosen.empty() ? "" : chosen.front()->get_name() + " ") + "--help";
}

}  // namespace

std::string DescribeMistake(const CLI::App& program, const CLI::ParseError& error) {
    return Complaint(program, error) + "; see " + HelpCall(program);
}

}  // namespace command
