// Going on from an earlier output.
#include "fleet/past_run.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

using namespace fleet;
using testing::HasSubstr;
using testing::UnorderedElementsAre;

class PastRuns : public testing::Test {
protected:
    ~PastRuns() override { std::filesystem::remove(path_); }

    static std::string Line(const std::string& host, const std::string& status) {
        return R"({"schema":"kalvex/1","host":")" + host + R"(","port":5989,"status":")" + status +
               R"(","sections":{"os":{"status":"failed","host":"x"}},"failures":[]})" + "\n";
    }
    void Write(const std::string& text) const { std::ofstream(path_, std::ios::binary) << text; }
    std::string Text() const {
        std::ostringstream text;
        text << std::ifstream(path_, std::ios::binary).rdbuf();
        return text.str();
    }

    const std::string path_ = testing::TempDir() + "past_run_" + std::to_string(getpid());
};

TEST_F(PastRuns, KnowWhichHostsWereReadWhole) {
    Write(Line("A", "ok") + Line("b", "partial") + Line("::1", "ok"));
    EXPECT_THAT(ReadPastRun(path_).Done(), UnorderedElementsAre("a:5989", "[::1]:5989"));
}

TEST_F(PastRuns, PassOverATornLastLine) {
    const std::string whole = Line("a", "ok");
    const std::string torn = Line("b", "ok");
    for (const std::size_t size : {std::size_t{1}, torn.size() / 2, torn.size() - 1}) {
        Write(whole + torn.substr(0, size));
        const PastRun run = ReadPastRun(path_);
        EXPECT_EQ(run.size, whole.size());
        EXPECT_THAT(run.Done(), UnorderedElementsAre("a:5989"));
    }
}

TEST_F(PastRuns, RefuseWhatIsNoDocument) {
    for (const char* text : {"host,port\n", "{}\n", "{\"schema\":\"other/1\"}\n", "\n"}) {
        Write(Line("a", "ok") + text);
        EXPECT_THAT([&] { ReadPastRun(path_); },
                    testing::ThrowsMessage<std::runtime_error>(HasSubstr("line 2 of")));
    }
    EXPECT_THAT([] { ReadPastRun("/no/such/file"); },
                testing::ThrowsMessage<std::runtime_error>(HasSubstr("cannot read")));
}

TEST_F(PastRuns, LoseTheLinesThatNewerOnesReplace) {
    Write(Line("a", "failed") + Line("b", "ok") + Line("a", "partial") + Line("c", "ok") +
          Line("c", "failed"));
    DropReplacedLines(path_);
    EXPECT_EQ(Text(), Line("b", "ok") + Line("a", "partial") + Line("c", "ok"));
    EXPECT_FALSE(std::filesystem::exists(path_ + ".new"));
}

TEST_F(PastRuns, StayAsTheyAreWhenNothingIsReplaced) {
    const std::string text = Line("a", "failed") + Line("b", "ok");
    Write(text);
    const auto before = std::filesystem::last_write_time(path_);
    DropReplacedLines(path_);
    EXPECT_EQ(Text(), text);
    EXPECT_EQ(std::filesystem::last_write_time(path_), before);
}

}  // namespace
