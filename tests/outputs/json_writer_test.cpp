// JSON as it is written.
#include "outputs/json/json_writer.h"

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <sstream>

namespace {

using namespace outputs;
using testing::HasSubstr;

std::string Written(std::string_view text) {
    std::ostringstream out;
    JsonWriter(out, JsonLayout::kOneLine).Value(text);
    return out.str();
}

std::string Written(double number) {
    std::ostringstream out;
    JsonWriter(out, JsonLayout::kOneLine).Value(number);
    return out.str();
}

std::string Example(JsonLayout layout) {
    std::ostringstream out;
    {
        JsonWriter json(out, layout);
        json.OpenObject();
        json.Member("a", true);
        json.Key("b");
        json.OpenArray();
        json.Null();
        json.Value(std::int64_t{-1});
        json.CloseArray();
        json.Key("c");
        json.OpenArray();
        json.CloseArray();
        json.CloseObject();
    }
    return out.str();
}

TEST(JsonWriter, IndentsForPeople) {
    EXPECT_EQ(Example(JsonLayout::kIndented),
              "{\n  \"a\": true,\n  \"b\": [\n    null,\n    -1\n  ],\n  \"c\": []\n}");
}

TEST(JsonWriter, WritesOneLineForPrograms) {
    EXPECT_EQ(Example(JsonLayout::kOneLine), R"({"a":true,"b":[null,-1],"c":[]})");
}

TEST(JsonWriter, WritesNumbersWithoutNeedlessDecimals) {
    EXPECT_EQ(Written(1.5), "1.5");
    EXPECT_EQ(Written(2.0), "2");
    EXPECT_EQ(Written(10.0), "10");
    EXPECT_EQ(Written(0.0001), "0");
}

TEST(JsonWriter, EscapesEveryControlCharacter) {
    EXPECT_EQ(Written("\x1B\n\r\t\"\\\x7F\u009B\u00A0"),
              "\"\\u001b\\n\\r\\t\\\"\\\\\\u007f\\u009b\u00A0\"");
}

TEST(JsonWriter, EscapesInvisibleCharactersAndDecodesToTheHostsText) {
    const std::string hostile = "a\u202Etxt\u200D\uFEFF\u2028\U000E0041\\u202e";
    const std::string text = Written(hostile);
    EXPECT_EQ(text, "\"a\\u202etxt\\u200d\\ufeff\\u2028\\udb40\\udc41\\\\u202e\"");
    EXPECT_EQ(nlohmann::json::parse(text), hostile);
}

TEST(JsonWriter, ReplacesBytesThatAreNotUtf8) {
    EXPECT_EQ(nlohmann::json::parse(Written("caf\xE9 x")), "caf\uFFFD x");
    EXPECT_THAT(nlohmann::json::parse(Written("\xED\xA0\x80")).get<std::string>(),
                HasSubstr("\uFFFD"));
}

TEST(JsonWriter, WritesAnyByteAsValidJson) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) {
        all.push_back(static_cast<char>(byte));
    }
    EXPECT_TRUE(nlohmann::json::accept(Written(all)));
}

}  // namespace
