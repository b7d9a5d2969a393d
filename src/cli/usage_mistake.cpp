#include "cli/usage_mistake.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "cli/command_error.h"
#include "cli/suggestion.h"

namespace command {

namespace {

using Words = std::vector<std::string>;

Words CommandsOf(const CLI::App& program) {
    Words names;
    for (const CLI::App* command : program.get_subcommands({})) {
        names.push_back(command->get_name());
    }
    return names;
}

std::string CommaList(const Words& words) {
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : ", ") + word;
    }
    return text;
}

bool LooksLikeOption(const std::string& word) { return word.size() > 1 && word.front() == '-'; }

/// Without a value, which may be a password: "--name=value", or "-nvalue".
std::string OptionName(const std::string& word) {
    constexpr std::size_t kShortName = 2;
    return word.starts_with("--") ? word.substr(0, word.find('=')) : word.substr(0, kShortName);
}

std::string ShownName(const std::string& word) {
    return LooksLikeOption(word) ? OptionName(word) : word;
}

Words OptionsOf(const CLI::App& command) {
    Words names;
    for (const CLI::Option* option : command.get_options()) {
        for (const std::string& name : option->get_lnames()) {
            // An option that is not in the help is there to be refused.
            if (!option->get_group().empty()) {
                names.push_back("--" + name);
            }
        }
    }
    return names;
}

/// In the order in which they were given. What follows an unknown option may be its value, so it is
/// not repeated.
std::string UnexpectedArguments(const CLI::App& command) {
    const Words unexpected = command.remaining();
    if (!LooksLikeOption(unexpected.front())) {
        Words quoted;
        for (const std::string& word : unexpected) {
            if (LooksLikeOption(word)) {
                break;
            }
            quoted.push_back('"' + word + '"');
        }
        return std::string("unexpected argument") + (quoted.size() > 1 ? "s " : " ") +
               CommaList(quoted);
    }
    Words options;
    for (const std::string& word : unexpected) {
        if (LooksLikeOption(word)) {
            options.push_back(OptionName(word));
        }
    }
    return std::string("unknown option") + (options.size() > 1 ? "s " : " ") + CommaList(options) +
           DidYouMean(options.front(), OptionsOf(command));
}

std::string MissingCommand(const CLI::App& program) {
    const Words commands = CommandsOf(program);
    const Words unknown = program.remaining();
    const std::string what = unknown.empty() ? "no command"
                                             : "unknown command \"" + ShownName(unknown.front()) +
                                                   "\"" + DidYouMean(unknown.front(), commands);
    return what + "; choose among " + CommaList(commands);
}

/// The library counts values: "--port: At Most 1 required but received 2".
std::string WrongNumberOfValues(const std::string& complaint) {
    const std::string option = complaint.substr(0, complaint.find(':'));
    const bool too_many = complaint.find("received") != std::string::npos;
    return option + (too_many ? " is given more than once; give it once"
                              : " needs a value; write it after the option");
}

std::string Complaint(const CLI::App& program, const CLI::ParseError& error) {
    const auto chosen = program.get_subcommands();
    if (chosen.empty()) {
        return MissingCommand(program);
    }
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) {
        return WrongNumberOfValues(error.what());
    }
    if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr) {
        const bool is_before_command = chosen.front()->remaining().empty();
        return UnexpectedArguments(is_before_command ? program : *chosen.front());
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

void CheckCommandName(const CLI::App& program, const std::string& name) {
    const Words commands = CommandsOf(program);
    if (std::ranges::count(commands, name) == 0) {
        throw UsageError("unknown command \"" + name + "\"" + DidYouMean(name, commands) +
                         "; choose among " + CommaList(commands));
    }
}

}  // namespace command
