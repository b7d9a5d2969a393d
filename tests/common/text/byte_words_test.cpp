// What is seen of eight bytes at once is what is seen of each.
#include "common/text/byte_words.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace Zentar::byte_words;

/// The first byte of the text that is marked, or its size.
template <class Mark>
std::size_t FirstIn(const std::string& text, Mark mark) {
    return static_cast<std::size_t>(FirstMarked(text.data(), text.data() + text.size(), mark) -
                                    text.data());
}

/// Each byte at each place of a word of others that are not marked.
template <class Mark, class IsMarked>
void ExpectMarked(char other, Mark mark, IsMarked is_marked) {
    for (unsigned byte = 0; byte < 256; ++byte) {
        for (std::size_t place = 0; place < 16; ++place) {
            std::string text(16, other);
            text[place] = static_cast<char>(byte);
            EXPECT_EQ(FirstIn(text, mark), is_marked(byte) ? place : 16)
                << "byte " << byte << " at " << place;
        }
    }
}

TEST(ByteWords, FindWhatIsNoCapitalLetter) {
    ExpectMarked('M', NotCapital, [](unsigned byte) { return byte < 'A' || byte > 'Z'; });
}

TEST(ByteWords, FindWhatIsNotGraphic) {
    ExpectMarked('x', NotGraphic, [](unsigned byte) { return byte <= ' ' || byte >= 0x80; });
}

TEST(ByteWords, FindAnAsciiCharacterFirst) {
    ExpectMarked(
        'x', [](std::uint64_t word) { return Equal(word, '"') | NotGraphic(word); },
        [](unsigned byte) { return byte == '"' || byte <= ' ' || byte >= 0x80; });
}

TEST(ByteWords, LeaveLessThanAWordAlone) {
    EXPECT_EQ(FirstIn("ABCDEFG", [](std::uint64_t) { return kHighBits; }), 0U);
    EXPECT_EQ(FirstIn("ABCDEFGHIJ", [](std::uint64_t) { return 0U; }), 8U);
}

TEST(ByteWords, CompareEachByte) {
    for (std::size_t size = 0; size < 20; ++size) {
        const std::string text(size, 'x');
        EXPECT_TRUE(SameBytes(text, std::string(size, 'x')));
        EXPECT_FALSE(SameBytes(text, std::string(size + 1, 'x')));
        for (std::size_t place = 0; place < size; ++place) {
            std::string other = text;
            other[place] = 'y';
            EXPECT_FALSE(SameBytes(text, other)) << place << " of " << size;
        }
    }
}

}  // namespace
