// What is wrong with a command line, in words for people.
#pragma once

#include <string>

namespace CLI {
class App;
class ParseError;
}  // namespace CLI

namespace command {

/// What is wrong, and what to write instead.
std::string DescribeMistake(const CLI::App& program, const CLI::ParseError& error);

/// Throws UsageError unless the program has a command of this name.
void CheckCommandName(const CLI::App& program, const std::string& name);

}  // namespace command
