#include "cli/section_choice.h"

#include <algorithm>
#include <iterator>

#include "cli/command_error.h"
#include "cli/suggestion.h"

namespace command {

using inventory::Section;

namespace {

std::vector<std::string> NamesIn(std::string word) {
    std::vector<std::string> names;
    for (std::size_t comma = word.find(','); comma != std::string::npos; comma = word.find(',')) {
        names.push_back(word.substr(0, comma));
        word.erase(0, comma + 1);
    }
    names.push_back(word);
    return names;
}

bool IsKnown(const std::string& name) {
    return name == kAllSections || inventory::FindSection(name) != nullptr;
}

std::vector<std::string> KnownNames() {
    std::vector<std::string> names{kAllSections};
    for (const Section& section : inventory::AllSections()) {
        names.emplace_back(section.name);
    }
    return names;
}

void CheckNames(const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        if (!IsKnown(name)) {
            throw UsageError("unknown section \"" + name + "\"" + DidYouMean(name, KnownNames()) +
                             "; choose among " + inventory::SectionNames());
        }
        if (std::ranges::count(names, name) > 1) {
            throw UsageError("section \"" + name + "\" is given twice; name each once, among " +
                             inventory::SectionNames());
        }
    }
}

}  // namespace

std::vector<Section> ChosenSections(const std::vector<std::string>& words) {
    std::vector<std::string> names;
    for (const std::string& word : words) {
        std::ranges::move(NamesIn(word), std::back_inserter(names));
    }
    CheckNames(names);
    const bool wants_all = names.empty() || std::ranges::count(names, kAllSections) > 0;
    std::vector<Section> chosen;
    std::ranges::copy_if(inventory::AllSections(), std::back_inserter(chosen),
                         [&](const Section& section) {
                             return wants_all || std::ranges::count(names, section.name) > 0;
                         });
    return chosen;
}

bool NamesSections(const std::string& word) { return std::ranges::all_of(NamesIn(word), IsKnown); }

}  // namespace command
