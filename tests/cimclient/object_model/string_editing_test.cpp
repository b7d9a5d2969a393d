// Strings that change, and the other ways to make, search and compare them.
#include <gmock/gmock.h>

#include <sstream>

#include "Pegasus/Common/CIMName.h"
#include "Pegasus/Common/String.h"
#include "support/client_view.h"

namespace {

using namespace Pegasus;
using support::TextOf;

const Char16 kUnits[] = {Char16('a'), Char16(0xE4), Char16('c'), Char16(0)};

TEST(StringEditing, AssignsWhatItCanBeMadeOf) {
    String text;
    EXPECT_EQ(TextOf(text.assign(String("one"))), "one");
    EXPECT_EQ(TextOf(text.assign("two")), "two");
    EXPECT_EQ(TextOf(text.assign("three", 2)), "th");
    EXPECT_EQ(TextOf(text.assign(kUnits)),
              "a\xC3\xA4"
              "c");
    EXPECT_EQ(TextOf(text.assign(kUnits, 1)), "a");
    text.reserveCapacity(100);
    EXPECT_EQ(TextOf(text = "four"), "four");
    text.clear();
    EXPECT_EQ(text.size(), 0U);
}

TEST(StringEditing, AppendsAndRemoves) {
    String text("a");
    text.append(Char16('b'));
    text.append(kUnits + 1, 1);
    text.append("cd");
    text.append("efg", 2);
    EXPECT_EQ(TextOf(text),
              "ab\xC3\xA4"
              "cdef");
    text.remove(1, 2);
    EXPECT_EQ(TextOf(text), "acdef");
    text.remove(3);
    EXPECT_EQ(TextOf(text), "acd");
    EXPECT_THROW(text.remove(4), IndexOutOfBoundsException);
    text.appendPrintf("%d-%s", 7, "x");
    EXPECT_EQ(TextOf(text), "acd7-x");
}

TEST(StringEditing, ChangesCase) {
    String text("aB\xC3\xA4");
    text.toUpper();
    EXPECT_EQ(TextOf(text), "AB\xC3\xA4");
    text.toLower();
    EXPECT_EQ(TextOf(text), "ab\xC3\xA4");
}

TEST(StringEditing, FindsUnitsAndTexts) {
    const String text("abcabc");
    EXPECT_EQ(text.find(Char16('b')), 1U);
    EXPECT_EQ(text.find(2, Char16('b')), 4U);
    EXPECT_EQ(text.find(Char16('x')), PEG_NOT_FOUND);
    EXPECT_EQ(text.find(String("ca")), 2U);
    EXPECT_EQ(text.reverseFind(Char16('b')), 4U);
    EXPECT_EQ(text.reverseFind(Char16('x')), PEG_NOT_FOUND);
}

TEST(StringEditing, UnitsCanBeReplaced) {
    String text("abc");
    const String copy = text;
    text[1] = Char16(0xE4);
    EXPECT_EQ(TextOf(text),
              "a\xC3\xA4"
              "c");
    EXPECT_EQ(TextOf(String(text)),
              "a\xC3\xA4"
              "c");
    EXPECT_STREQ(text.getCString(),
                 "a\xC3\xA4"
                 "c");
    EXPECT_EQ(text.size(), 3U);
    EXPECT_EQ(TextOf(copy), "abc");
    String nothing;
    EXPECT_EQ(nothing[0], Char16(0));
}

TEST(StringEditing, CompareByUnits) {
    EXPECT_EQ(String::compare("abx", "aby", 2), 0);
    // In UTF-16 a surrogate is less than U+FFFD; in UTF-8 it would be more.
    const String surrogate("\xF0\x9F\x98\x80");
    const String replacement("\xEF\xBF\xBD");
    EXPECT_EQ(String::compare(surrogate, replacement), -1);
    EXPECT_EQ(String::compare(replacement, surrogate), 1);
    EXPECT_EQ(String::compare(replacement, replacement + "x"), -1);
    EXPECT_EQ(String::compare(replacement, String(replacement)), 0);
}

TEST(StringEditing, HasTheOperatorsOfAText) {
    const String a("a");
    const String b("b");
    EXPECT_TRUE(a == "a" && "a" == a && a != b && a != "b" && "b" != a);
    EXPECT_TRUE(a < b && a <= b && b > a && b >= a);
    EXPECT_EQ(TextOf(a + b), "ab");
    EXPECT_EQ(TextOf(a + "c"), "ac");
    EXPECT_EQ(TextOf("c" + a), "ca");
    std::ostringstream stream;
    stream << String("a\xC3\xA4\xE2\x82\xAC");
    EXPECT_EQ(stream.str(), "a\xE4\\x20AC");
}

TEST(StringEditing, CStringsShareAndCopy) {
    CString text = String("abc").getCString();
    const CString copy(text);
    CString other;
    EXPECT_EQ(static_cast<const char*>(other), nullptr);
    other = copy;
    EXPECT_STREQ(other, "abc");
    EXPECT_STREQ(String().getCString(), "");
}

TEST(Names, CompareWithTextsInAnyCase) {
    const CIMName name("Abc");
    EXPECT_TRUE(name == "aBC" && "ABC" == name && name != "x" && "x" != name);
    EXPECT_TRUE(name.equal("abc"));
    CIMName other;
    EXPECT_EQ(TextOf((other = "Def").getString()), "Def");
    EXPECT_EQ(TextOf((other = String("Ghi")).getString()), "Ghi");
    other.clear();
    EXPECT_TRUE(other.isNull());
    EXPECT_THROW(other = "9x", InvalidNameException);
}

TEST(Names, OfNamespacesDoTheSame) {
    const CIMNamespaceName name("root/Cimv2");
    EXPECT_TRUE(name == "ROOT/cimv2" && "root/CIMV2" == name && name != "root" && "root" != name);
    EXPECT_TRUE(name.equal("ROOT/CIMV2"));
    CIMNamespaceName other;
    EXPECT_EQ(TextOf((other = "/a/b").getString()), "a/b");
    EXPECT_EQ(TextOf((other = String("c")).getString()), "c");
    other.clear();
    EXPECT_TRUE(other.isNull());
}

}  // namespace
