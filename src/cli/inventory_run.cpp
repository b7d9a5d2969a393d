#include "cli/inventory_run.h"

#include <new>

namespace command {

using inventory::Section;
using inventory::SectionReading;

void InventoryRun::Read(const std::vector<Section>& sections) {
    std::size_t number = 0;
    for (const Section& section : sections) {
        progress_.Show(std::string("reading ") + section.name + " (" + std::to_string(++number) +
                       " of " + std::to_string(sections.size()) + ")");
        const SectionReading reading = ReadOrFail(section);
        progress_.Hide();
        printer_.Print(reading);
        report_.Add(section.name, reading.failures);
        report_.AddDropped(reading.dropped_failures);
        has_failures_ = has_failures_ || reading.content.result != 0;
        has_content_ = has_content_ || reading.HasContent();
    }
}

SectionReading InventoryRun::ReadOrFail(const Section& section) {
    if (!ran_out_of_memory_) {
        try {
            return inventory::ReadSection(section, host_);
        } catch (const std::bad_alloc&) {
            ran_out_of_memory_ = true;
        }
    }
    return inventory::FailedSection(section);
}

ExitStatus InventoryRun::Status() const {
    if (ran_out_of_memory_) {
        return kExitNothing;
    }
    if (!has_failures_) {
        return kExitDone;
    }
    return has_content_ ? kExitPartly : kExitNothing;
}

}  // namespace command
