// Object paths: their texts, what is no path, and which are equal.
#include <gmock/gmock.h>

#include "Pegasus/Common/CIMObjectPath.h"
#include "support/client_view.h"

namespace {

using namespace Pegasus;
using support::FailureOf;
using support::TextOf;

struct Form {
    const char* input;
    const char* text;  ///< null: as it was
};

TEST(ObjectPath, PrintsInItsCanonicalForm) {
    const Form forms[] = {
        {"CIM_Foo", nullptr},
        {"CIM_Foo.b=2,a=\"x\",C=TRUE", "CIM_Foo.a=\"x\",b=2,C=TRUE"},
        {"CIM_Foo.c=true,B=false", "CIM_Foo.B=FALSE,c=TRUE"},
        {"CIM_Foo.n=-5", nullptr},
        {"CIM_Foo.n=0x1F", nullptr},
        {"root/cimv2:CIM_Foo.k=1", nullptr},
        {"/root/cimv2:CIM_Foo.k=1", "root/cimv2:CIM_Foo.k=1"},
        {"//host:5988/root/cimv2:CIM_Foo.k=1", nullptr},
        {"//[::1]:5988/root:X.k=1", nullptr},
        {"host/root:X", nullptr},
        {"X.k=\"a\\\"b\\\\c\"", nullptr},
        {"X.r=\"Y.a=1\"", nullptr},
        {"X.r=\"root/cimv2:Y.a=\\\"z\\\"\"", nullptr},
        {"X.r=\"Y\"", nullptr},
        {"X.", "X"},
        {"X.k=1,", "X.k=1"},
        {"X.k=1,k=2", nullptr},
    };
    for (const Form& form : forms) {
        EXPECT_EQ(TextOf(CIMObjectPath(form.input).toString()),
                  form.text != nullptr ? form.text : form.input);
    }
    EXPECT_EQ(TextOf(CIMObjectPath().toString()), "");
}

TEST(ObjectPath, TellsItsParts) {
    const CIMObjectPath path("//host:5988/root/cimv2:X.k=1");
    EXPECT_EQ(TextOf(path.getClassName().getString()), "X");
    EXPECT_EQ(path.getKeyBindings().size(), 1U);
    const CIMKeyBinding key = CIMObjectPath("X.k=\"a\\\"b\\\\c\"").getKeyBindings()[0];
    EXPECT_EQ(TextOf(key.getName().getString()), "k");
    EXPECT_EQ(TextOf(key.getValue()), "a\"b\\c");
}

TEST(ObjectPath, TakesAQuotedPathWithKeysForAReference) {
    EXPECT_EQ(CIMObjectPath("X.r=\"Y.a=1\"").getKeyBindings()[0].getType(),
              CIMKeyBinding::REFERENCE);
    EXPECT_EQ(CIMObjectPath("X.r=\"Y\"").getKeyBindings()[0].getType(), CIMKeyBinding::STRING);
}

TEST(ObjectPath, BuiltOfPartsSortsItsKeys) {
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding("Zeta", "str \"q\" \\ back", CIMKeyBinding::STRING));
    keys.append(CIMKeyBinding("num", "42", CIMKeyBinding::NUMERIC));
    keys.append(CIMKeyBinding("Bool", "true", CIMKeyBinding::BOOLEAN));
    keys.append(CIMKeyBinding("alpha", "root/x:Y.a=\"1\",b=2", CIMKeyBinding::REFERENCE));
    EXPECT_EQ(TextOf(CIMObjectPath("host", "root/cimv2", "K", keys).toString()),
              "//host/root/cimv2:K.alpha=\"root/x:Y.a=\\\"1\\\",b=2\",Bool=true,num=42,"
              "Zeta=\"str \\\"q\\\" \\\\ back\"");
    EXPECT_EQ(TextOf(CIMObjectPath("host", CIMNamespaceName(), "K").toString()), "//host/:K");
}

TEST(ObjectPath, KeepsKeyTextsVerbatim) {
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding("n", "zz", CIMKeyBinding::NUMERIC));
    keys.append(CIMKeyBinding("s", "a\n\xE2\x82\xAC", CIMKeyBinding::STRING));
    EXPECT_EQ(TextOf(CIMObjectPath("", CIMNamespaceName(), "X", keys).toString()),
              "X.n=zz,s=\"a\n\xE2\x82\xAC\"");
}

struct Refusal {
    const char* input;
    const char* reason;
};

const Refusal kRefusals[] = {
    {"", "class name  not a legal CIM name"},
    {"9X.k=1", "class name 9X not a legal CIM name"},
    {"X=@", "class name X=@ not a legal CIM name"},
    {"//host/root:X:k=1", "class name X:k=1 not a legal CIM name"},
    {"//host", "missing slash after hostname"},
    {"//host/:X", "invalid namespace name"},
    {"//ho st/root:X", "invalid hostname"},
    {"//256.1.1.1/root:X", "invalid hostname"},
    {"//host:99999/root:X", "invalid hostname"},
    {"//h./root:X", "invalid hostname"},
    {"//-h/root:X", "invalid hostname"},
    {"//[fe80::1]/root:X", "invalid hostname"},
    {"X.k=1.5", "invalid key-value pair, invalid number value 1.5"},
    {"X.k=0b101", "invalid key-value pair, invalid number value 0b101"},
    {"X.k=017", "invalid key-value pair, invalid number value 017"},
    {"X.k=+5", "invalid key-value pair, invalid number value +5"},
    {"X.k=abc", "invalid key-value pair, invalid number value abc"},
    {"X.k='a'", "invalid key-value pair, invalid number value 'a'"},
    {"X.k=", "invalid key-value pair, invalid number value "},
    {"X.k=1a", "invalid key-value pair, invalid number value 1a"},
    {"X.k=1 ", "invalid key-value pair, invalid number value 1 "},
    {"X.k=18446744073709551616",
     "invalid key-value pair, invalid number value 18446744073709551616"},
    {"X.k=-", "invalid key-value pair, invalid negative number value -"},
    {"X.k=--1", "invalid key-value pair, invalid negative number value --1"},
    {"X.k=-1.0E-5", "invalid key-value pair, invalid negative number value -1.0E-5"},
    {"X.k=-9223372036854775809",
     "invalid key-value pair, invalid negative number value -9223372036854775809"},
    {"X.k=true1", "invalid key-value pair, value should be TRUE or FALSE"},
    {"X.k=\"abc", "invalid key-value pair, missing quote in key value"},
    {"X.k=\"a\"b", "invalid key-value pair, next key-value pair has to start with comma"},
    {"X.k=\"a\\nb\"", "invalid key-value pair, malformed value"},
    {"X.k", "invalid key-value pair, missing equal sign"},
    {"X.9k=1", "invalid key-value pair, invalid key name:9k"},
    {"X..k=1", "invalid key-value pair, invalid key name:.k"},
    {"X.k = 1", "invalid key-value pair, invalid key name:k "},
};

TEST(ObjectPath, SaysWhyATextIsNone) {
    for (const Refusal& refusal : kRefusals) {
        EXPECT_EQ(FailureOf([&] { CIMObjectPath path(refusal.input); }),
                  "MalformedObjectNameException [malformed object name: " +
                      std::string(refusal.input) + ", reason:\"" + refusal.reason + "\"]");
    }
    for (const char* host : {"a b", "256.1.1.1", "host:99999", "h.", "-h", "[fe80::1]"}) {
        EXPECT_EQ(FailureOf([&] { CIMObjectPath(host, "root", "X"); }),
                  "MalformedObjectNameException [malformed object name: " + std::string(host) +
                      ", reason:\"invalid hostname\"]");
    }
}

TEST(ObjectPath, TakesHostsOfEveryKind) {
    for (const char* host : {"h", "a-b_c.d", "host:", "host:0", "host:65535", "192.0.2.1", "[::1]",
                             "[2001:db8::1]:5989"}) {
        EXPECT_EQ(FailureOf([&] { CIMObjectPath(host, "root", "X"); }), "nothing thrown") << host;
    }
}

}  // namespace
