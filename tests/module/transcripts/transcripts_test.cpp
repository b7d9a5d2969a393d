// The module's log, whole, against the transcripts in tests/data/transcripts.
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "recording.h"

namespace transcripts {

void PrintTo(const Scenario& scenario, std::ostream* os) { *os << scenario.name; }

namespace {

constexpr const char* kFolder = KALVEX_TEST_DATA "/transcripts";

std::vector<std::string> Lines(std::istream& text) {
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::string LineAt(const std::vector<std::string>& lines, std::size_t index) {
    return index < lines.size() ? lines[index] : "(end of transcript)";
}

class Transcripts : public ::testing::TestWithParam<Scenario> {
protected:
    static void ExpectLogged(Construction construction);
};

void Transcripts::ExpectLogged(Construction construction) {
    const std::string path = FileOf(GetParam(), kFolder);
    std::ifstream file(path);
    ASSERT_TRUE(file) << path;
    const auto expected = Lines(file);
    std::istringstream recorded(Record(GetParam(), construction));
    const auto actual = Lines(recorded);
    const auto [first, second] =
        std::mismatch(expected.begin(), expected.end(), actual.begin(), actual.end());
    if (first != expected.end() || second != actual.end()) {
        const auto index = static_cast<std::size_t>(first - expected.begin());
        ADD_FAILURE() << path << ":" << index + 1 << "\n  was: " << LineAt(expected, index)
                      << "\n  is:  " << LineAt(actual, index)
                      << "\n`make transcripts` rewrites the transcripts and shows the difference";
    }
}

TEST_P(Transcripts, AreWhatTheModuleLogs) { ExpectLogged(Construction::kWithoutOptions); }

TEST_P(Transcripts, AreTheSameWithDefaultOptions) { ExpectLogged(Construction::kWithOptions); }

TEST_P(Transcripts, KeepThePasswordToThemselves) {
    std::ifstream file(FileOf(GetParam(), kFolder));
    std::stringstream text;
    text << file.rdbuf();
    EXPECT_THAT(text.str(), ::testing::HasSubstr("Connecting to root:**********@127.0.0.1:PORT"));
    EXPECT_THAT(text.str(), ::testing::Not(::testing::HasSubstr(kPassword)));
}

INSTANTIATE_TEST_SUITE_P(Scenario, Transcripts, ::testing::ValuesIn(Scenarios()),
                         [](const auto& test) {
                             std::string name = test.param.name;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

TEST(TranscriptFolder, HoldsNothingElse) {
    std::set<std::string> expected;
    for (const Scenario& scenario : Scenarios()) {
        expected.insert(FileOf(scenario, kFolder));
    }
    std::set<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(kFolder)) {
        found.insert(entry.path().string());
    }
    EXPECT_EQ(found, expected);
}

}  // namespace
}  // namespace transcripts
