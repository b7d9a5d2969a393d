// Files that are written whole or not at all.
#include "outputs/whole_file.h"

#include <gmock/gmock.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

namespace {

using outputs::WholeFile;
using testing::IsEmpty;
namespace fs = std::filesystem;

class WholeFileTest : public testing::Test {
protected:
    WholeFileTest() {
        char name[] = "/tmp/kalvex-whole-XXXXXX";
        folder_ = mkdtemp(name);
    }
    ~WholeFileTest() override { fs::remove_all(folder_); }

    std::string PathOf(const std::string& name) const { return folder_ + "/" + name; }
    static std::string Content(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    static void Write(const std::string& path, const std::string& content) {
        WholeFile file(path);
        file.stream() << content;
        file.Commit();
    }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder_)) {
            names.push_back(entry.path().filename());
        }
        return names;
    }
    static int ErrorOf(const std::string& path, const std::string& content) {
        try {
            Write(path, content);
        } catch (const std::system_error& error) {
            return error.code().value();
        }
        return 0;
    }

    std::string folder_;
};

TEST_F(WholeFileTest, HoldsAllThatWasWritten) {
    const std::string content(200'001, 'x');
    Write(PathOf("a"), content);
    EXPECT_EQ(Content(PathOf("a")), content);
    EXPECT_THAT(Names(), testing::ElementsAre("a"));
}

TEST_F(WholeFileTest, ReplacesWhatWasThereOnlyWhenItIsCommitted) {
    Write(PathOf("a"), "old");
    WholeFile file(PathOf("a"));
    file.stream() << "new" << std::flush;
    EXPECT_EQ(Content(PathOf("a")), "old");
    file.Commit();
    EXPECT_EQ(Content(PathOf("a")), "new");
}

TEST_F(WholeFileTest, LeavesNothingWithoutCommit) {
    { WholeFile(PathOf("a")).stream() << "x" << std::flush; }
    EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(WholeFileTest, LeavesNothingWhenThereIsNoRoom) {
    Write(PathOf("a"), "old");
    signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small{1000, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const int error = ErrorOf(PathOf("a"), std::string(2000, 'x'));
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(error, EFBIG);
    EXPECT_EQ(Content(PathOf("a")), "old");
    EXPECT_THAT(Names(), testing::ElementsAre("a"));
}

TEST_F(WholeFileTest, HasThePermissionOfOtherNewFiles) {
    const mode_t before = umask(027);
    Write(PathOf("a"), "x");
    umask(before);
    struct stat status {};
    ASSERT_EQ(stat(PathOf("a").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
}

TEST_F(WholeFileTest, FollowsALink) {
    Write(PathOf("a"), "old");
    fs::create_symlink("a", PathOf("link"));
    Write(PathOf("link"), "new");
    EXPECT_TRUE(fs::is_symlink(PathOf("link")));
    EXPECT_EQ(Content(PathOf("a")), "new");
}

TEST_F(WholeFileTest, ADeviceIsWrittenToAndStays) {
    EXPECT_EQ(ErrorOf("/dev/full", "x"), ENOSPC);
    EXPECT_EQ(ErrorOf("/dev/null", "x"), 0);
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST_F(WholeFileTest, NeedsAFolderThatIsThere) {
    EXPECT_EQ(ErrorOf(PathOf("missing/a"), "x"), ENOENT);
    EXPECT_EQ(ErrorOf(folder_, "x"), EISDIR);
}

TEST_F(WholeFileTest, ItsPlaceCanBeCheckedBefore) {
    EXPECT_EQ(outputs::WhyNotWritable(PathOf("a")), "");
    EXPECT_EQ(outputs::WhyNotWritable("/dev/null"), "");
    EXPECT_EQ(outputs::WhyNotWritable(PathOf("missing/a")), "No such file or directory");
    EXPECT_EQ(outputs::WhyNotWritable(folder_), "Is a directory");
    EXPECT_THAT(Names(), IsEmpty());
}

}  // namespace
