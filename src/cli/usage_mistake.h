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

}  // namespace command
