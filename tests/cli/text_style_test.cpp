// What text output may use of where it goes.
#include "cli/text_style.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <string>

namespace {

using command::TextStyleOf;

class TextStyle : public testing::Test {
protected:
    TextStyle() {
        unsetenv("COLUMNS");
        unsetenv("NO_COLOR");
        grantpt(master_);
        unlockpt(master_);
        terminal_ = open(ptsname(master_), O_RDWR | O_NOCTTY | O_CLOEXEC);
        SetTerminalColumns(123);
    }

    ~TextStyle() override {
        unsetenv("COLUMNS");
        unsetenv("NO_COLOR");
        close(terminal_);
        close(master_);
        close(file_);
    }

    void SetTerminalColumns(unsigned short columns) const {
        winsize size{};
        size.ws_row = 24;
        size.ws_col = columns;
        ASSERT_EQ(ioctl(terminal_, TIOCSWINSZ, &size), 0);
    }

    int terminal_ = -1;
    int file_ = open("/dev/null", O_WRONLY | O_CLOEXEC);

private:
    int master_ = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
};

TEST_F(TextStyle, FitsTheTerminal) {
    EXPECT_EQ(TextStyleOf(terminal_).columns, 123U);
    SetTerminalColumns(0);
    EXPECT_EQ(TextStyleOf(terminal_).columns, 100U);
}

TEST_F(TextStyle, HasAHundredColumnsWithoutATerminal) {
    EXPECT_EQ(TextStyleOf(file_).columns, 100U);
}

TEST_F(TextStyle, FollowsColumnsWhenItIsAPositiveNumber) {
    setenv("COLUMNS", "61", 1);
    EXPECT_EQ(TextStyleOf(terminal_).columns, 61U);
    EXPECT_EQ(TextStyleOf(file_).columns, 61U);
    for (const char* no_number : {"", "0", "-5", "80x", "wide", "99999999999999999999999"}) {
        setenv("COLUMNS", no_number, 1);
        EXPECT_EQ(TextStyleOf(terminal_).columns, 123U) << no_number;
    }
}

TEST_F(TextStyle, HasColourOnATerminalAlone) {
    EXPECT_TRUE(TextStyleOf(terminal_).has_colour);
    EXPECT_FALSE(TextStyleOf(file_).has_colour);
}

TEST_F(TextStyle, HasNoColourWithNoColor) {
    setenv("NO_COLOR", "0", 1);
    EXPECT_FALSE(TextStyleOf(terminal_).has_colour);
    setenv("NO_COLOR", "", 1);
    EXPECT_TRUE(TextStyleOf(terminal_).has_colour);
}

}  // namespace
