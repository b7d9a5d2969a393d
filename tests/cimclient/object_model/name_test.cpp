// Names and namespaces.
#include <gmock/gmock.h>

#include "Pegasus/Common/CIMName.h"
#include "support/client_view.h"

namespace {

using namespace Pegasus;
using support::FailureOf;
using support::TextOf;

TEST(Name, IsLettersDigitsAndUnderscores) {
    for (const char* name : {"a", "_x9", "CIM_Foo", "\xC3\xA9t\xC3\xA9", "\xEF\xBF\xAF"}) {
        EXPECT_EQ(FailureOf([&] { CIMName one(name); }), "nothing thrown") << name;
    }
    for (const char* name : {"x y", "", "9abc", "a-b", "a.b", "a/b", "\xEF\xBF\xB0"}) {
        EXPECT_EQ(FailureOf([&] { CIMName one(name); }),
                  "InvalidNameException [The CIM name is not valid: " + std::string(name) + "]");
    }
}

TEST(Name, ComparesWithoutRegardToCase) {
    EXPECT_EQ(CIMName("Foo"), CIMName("fOO"));
    EXPECT_NE(CIMName("Foo"), CIMName("Fo"));
    EXPECT_EQ(CIMName("Foo"), "FOO");
}

TEST(Name, CanBeReplacedByAText) {
    CIMName name("a");
    name = String("b");
    EXPECT_EQ(TextOf(name.getString()), "b");
    CIMNamespaceName name_space;
    name_space = String("/root");
    EXPECT_EQ(TextOf(name_space.getString()), "root");
}

TEST(Name, ThatIsNullEqualsAnotherOnly) {
    EXPECT_TRUE(CIMName().isNull());
    EXPECT_EQ(TextOf(CIMName().getString()), "");
    EXPECT_EQ(CIMName(), CIMName());
    EXPECT_NE(CIMName(), CIMName("a"));
}

TEST(Namespace, IsNamesBetweenSlashes) {
    EXPECT_EQ(TextOf(CIMNamespaceName("/root/cimv2").getString()), "root/cimv2");
    EXPECT_EQ(TextOf(CIMNamespaceName("root").getString()), "root");
    EXPECT_TRUE(CIMNamespaceName().isNull());
    for (const char* name : {"root/cimv2/", "root//cimv2", "", "/", "ro ot", "root/9x",
                             "root\\cimv2", "root.x", "root/a-b", "//root"}) {
        EXPECT_EQ(FailureOf([&] { CIMNamespaceName one(name); }),
                  "InvalidNamespaceNameException [invalid CIM namespace name: " +
                      std::string(name) + "]");
    }
}

}  // namespace
