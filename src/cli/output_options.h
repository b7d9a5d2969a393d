// The options that say how an inventory is printed, and where to.
#pragma once

#include <string>
#include <vector>

#include "inventory/document.h"
#include "inventory/sections.h"

namespace CLI {
class App;
}

namespace command {

struct OutputOptions {
    std::string format = "text";
    std::string file;    ///< empty for standard output
    std::string folder;  ///< for one file a list; empty without one
};

/// Adds --format, --output and --output-dir. The structure has to outlive the parsing.
void AddOutputOptions(CLI::App& app, OutputOptions& options);

/// Before a host is asked. Throws UsageError when the options contradict each other, when the
/// sections have more lists than the form can hold, or when nothing can be written there.
void CheckOutputOptions(const OutputOptions& options,
                        const std::vector<inventory::Section>& sections);

/// Why not all could be written, for people; empty when it was. Of standard output main() says it.
std::string WriteOutput(const inventory::Document& document, const OutputOptions& options);

}  // namespace command
