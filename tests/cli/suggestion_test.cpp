// What somebody may have meant.
#include "cli/suggestion.h"

#include <gtest/gtest.h>

namespace {

using command::DidYouMean;
using command::EditDistance;

TEST(Suggestion, CountsEdits) {
    EXPECT_EQ(EditDistance("", ""), 0U);
    EXPECT_EQ(EditDistance("port", ""), 4U);
    EXPECT_EQ(EditDistance("port", "ports"), 1U);
    EXPECT_EQ(EditDistance("prot", "port"), 1U);
    EXPECT_EQ(EditDistance("kitten", "sitting"), 3U);
}

TEST(Suggestion, NamesTheNearestWord) {
    EXPECT_EQ(DidYouMean("packges", {"system", "packages", "pci"}), " (did you mean packages?)");
    EXPECT_EQ(DidYouMean("so", {"os", "system"}), " (did you mean os?)");
}

TEST(Suggestion, SaysNothingOfWordsThatAreFar) {
    EXPECT_EQ(DidYouMean("disks", {"system", "os", "packages"}), "");
    EXPECT_EQ(DidYouMean("", {"os"}), "");
    EXPECT_EQ(DidYouMean("os", {}), "");
    EXPECT_EQ(DidYouMean(std::string(100'000, 'o'), {"os"}), "");
}

}  // namespace
