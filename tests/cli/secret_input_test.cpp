// Reading passwords, and forgetting them.
#include "cli/secret_input.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
namespace {

using Zentar::Secret;

/// What a secret reads from a pipe that holds `content`.
std::string ReadThrough(const std::string& content, bool one_line) {
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    EXPECT_EQ(write(ends[1], content.data(), content.size()), static_cast<ssize_t>(content.size()));
    close(ends[1]);
    Secret secret;
    EXPECT_TRUE(command::ReadSecret(ends[0], one_line, secret));
    close(ends[0]);
    command::DropLineBreak(secret);
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
    const std::string long_text(command::kLongestPassword + 1, 'x');
    ASSERT_EQ(std::fwrite(long_text.data(), 1, long_text.size(), file), long_text.size());
    std::rewind(file);
    Secret secret;
    EXPECT_FALSE(command::ReadSecret(fileno(file), false, secret));
    EXPECT_EQ(errno, E2BIG);
    std::fclose(file);
}

TEST(Secret, LeavesNothingWhereItHasBeen) {
    Secret secret("pw");
    const char* const first = secret.text().data();  // within the object, which stays
    secret.Resize(40);                               // needs memory of its own
    EXPECT_NE(secret.text().data(), first);
    EXPECT_NE(std::string(first, 2), "pw");
    Secret short_secret("pw");
    const char* const second = short_secret.text().data();
    secret = std::move(short_secret);
    EXPECT_EQ(secret.text(), "pw");
    EXPECT_EQ(std::string(second, 2), std::string(2, '\0'));
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
