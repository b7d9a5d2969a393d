#include "cli/section_choice.h"

#include <algorithm>
#include <iterator>

#include "cli/command_error.h"

namespace command {

using inventory::Section;

std::vector<Section> ChosenSections(const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        if (inventory::FindSection(name) == nullptr) {
            throw UsageError("unknown section \"" + name + "\"; choose among " +
                             inventory::SectionNames());
        }
        if (std::ranges::count(names, name) > 1) {
            throw UsageError("section \"" + name + "\" is given twice; name each once, among " +
                             inventory::SectionNames());
        }
    }
    std::vector<Section> chosen;
    std::ranges::copy_if(inventory::AllSections(), std::back_inserter(chosen),
                         [&](const Section& section) {
                             return names.empty() || std::ranges::count(names, section.name) > 0;
                         });
    return chosen;
}

}  // namespace command
