// Reading passwords, and forgetting them.
#include "cli/secret.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "common/platform/wipe.h"

namespace {

using command::Secret;

/// What a secret reads from a pipe that holds `content`.
std::string ReadThrough(const std::string& content, bool one_line) {
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    EXPECT_EQ(write(ends[1], content.data(), content.size()), static_cast<ssize_t>(content.size()));
    close(ends[1]);
    Secret secret;
    EXPECT_TRUE(secret.ReadFrom(ends[0], one_line));
    close(ends[0]);
    secret.DropLineBreak();
    return secret.text();
}

TEST(Secret, DropsOneLineBreakOfEitherKind) {
    EXPECT_EQ(ReadThrough("pw", false), "pw");
    EXPECT_EQ(ReadThrough("pw\n", false), "pw");
    EXPECT_EQ(ReadThrough("pw\r\n", false), "pw");
    EXPECT_EQ(ReadThrough("pw\n\n", false), "pw\n");
    EXPECT_EQ(ReadThrough("pw\r", false), "pw\r");
    EXPECT_EQ(ReadThrough(" p w \n", false), " p w ");
    EXPECT_EQ(ReadThrough("\n", false), "");
    EXPECT_EQ(ReadThrough("", false), "");
}

TEST(Secret, RefusesMoreThanItHolds) {
    FILE* const file = std::tmpfile();
    const std::string long_text(Secret::kCapacity + 1, 'x');
    ASSERT_EQ(std::fwrite(long_text.data(), 1, long_text.size(), file), long_text.size());
    std::rewind(file);
    Secret secret;
    EXPECT_FALSE(secret.ReadFrom(fileno(file), false));
    EXPECT_EQ(errno, E2BIG);
    std::fclose(file);
}

TEST(Secret, NeverMovesWhileItGrows) {
    Secret secret("a");
    const char* const place = secret.text().data();
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const std::string more(60000, 'b');
    ASSERT_EQ(write(ends[1], more.data(), more.size()), static_cast<ssize_t>(more.size()));
    close(ends[1]);
    ASSERT_TRUE(secret.ReadFrom(ends[0], false));
    close(ends[0]);
    EXPECT_EQ(secret.text().data(), place);
}

TEST(Wipe, OverwritesTheWholeBuffer) {
    std::string text = "geheim, and long enough to need memory of its own";
    text.resize(6);
    const char* const place = text.data();
    const std::size_t capacity = text.capacity();
    Zentar::Wipe(text);
    ASSERT_EQ(text.data(), place);
    EXPECT_TRUE(text.empty());
    EXPECT_TRUE(std::all_of(place, place + capacity, [](char c) { return c == '\0'; }));
}

}  // namespace
