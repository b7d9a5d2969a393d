// Every section of the inventory is held to a transcript, fuzzed and read by the soak, and every
// fault is acted on and used by the soak.
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "inventory/sections.h"
#include "simhost/fault_acts.h"
#include "soak/operations.h"
#include "soak/round_plan.h"

namespace {

/// What the same operation is called where it is tried.
struct Names {
    std::string section;
    std::string transcript;
    char fuzzed_as;  ///< the first byte of inputs of fuzz/reply_fuzzer.cpp
    std::string soaked_as;
};

const Names kNames[] = {
    {"system", "builtin-system.txt", 's', "computer system"},
    {"os", "builtin-hypervisor.txt", 'h', "hypervisor"},
    {"packages", "builtin-packages.txt", 'p', "packages"},
    {"events", "builtin-events.txt", 'i', "event log"},
    {"privileges", "builtin-privileges.txt", 'v', "privileges"},
    {"ports", "builtin-ports.txt", 'n', "Ethernet ports"},
    {"ipv4", "builtin-ipv4.txt", '4', "IPv4 endpoints"},
    {"ipv6", "builtin-ipv6.txt", '6', "IPv6 endpoints"},
    {"pci", "builtin-pci.txt", 'd', "PCI"},
};

bool HasSeed(char letter) {
    using std::filesystem::directory_iterator;
    return std::any_of(
        directory_iterator(KALVEX_FUZZ_CORPORA "/reply"), directory_iterator(),
        [&](const auto& input) { return std::ifstream(input.path()).get() == letter; });
}

class EachSection : public testing::TestWithParam<inventory::Section> {
protected:
    static const Names* NamesOf(const std::string& section) {
        const auto* const found = std::ranges::find(kNames, section, &Names::section);
        return found == std::end(kNames) ? nullptr : found;
    }
};

TEST_P(EachSection, IsTriedEverywhere) {
    const Names* const names = NamesOf(GetParam().name);
    ASSERT_NE(names, nullptr) << "add it to kNames";
    EXPECT_TRUE(std::filesystem::exists(KALVEX_TEST_DATA "/transcripts/" + names->transcript))
        << "add it to tests/module/transcripts/operations.cpp";
    EXPECT_TRUE(HasSeed(names->fuzzed_as))
        << "add it to fuzz/reply_fuzzer.cpp, and an input to fuzz/corpora/reply";
    EXPECT_NE(std::ranges::find(soak::Operations(), names->soaked_as, &soak::Operation::name),
              soak::Operations().end())
        << "add it to bench/soak/operations.cpp";
}

INSTANTIATE_TEST_SUITE_P(Inventory, EachSection, testing::ValuesIn(inventory::AllSections()),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(EachFault, IsActedOn) {
    for (const auto& name : simhost::Faults::Names()) {
        const simhost::Act act = simhost::ActOf(simhost::Faults::ByName(name.name).kind);
        EXPECT_TRUE(std::visit([](auto function) { return function != nullptr; }, act))
            << name.name;
    }
}

TEST(EachFault, IsUsedByTheSoak) { EXPECT_NO_THROW(soak::RequireAllWays()); }

}  // namespace
