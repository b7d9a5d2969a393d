// Instances, objects, properties and qualifiers: handles to shared bodies.
#include <gmock/gmock.h>

#include "Pegasus/Common/CIMInstance.h"
#include "support/client_view.h"

namespace {

using namespace Pegasus;
using support::FailureOf;
using support::TextOf;

constexpr const char* kUninitialized = "UninitializedObjectException [uninitialized object]";
constexpr const char* kOutOfBounds = "IndexOutOfBoundsException [index out of bounds]";

CIMInstance WithOne() {
    CIMInstance instance(CIMName("CIM_Foo"));
    instance.addProperty(CIMProperty("Name", String("a")));
    return instance;
}

TEST(Handle, SharesItsBodyWithCopies) {
    CIMInstance instance = WithOne();
    const CIMInstance copy = instance;
    const CIMObject object(instance);
    CIMProperty property("Other", String("b"));
    instance.addProperty(property);
    property.addQualifier(CIMQualifier("q", true));
    instance.setPath(CIMObjectPath("CIM_Foo.k=1"));
    EXPECT_EQ(copy.getPropertyCount(), 2U);
    EXPECT_EQ(copy.getProperty(1).getQualifierCount(), 1U);
    EXPECT_EQ(TextOf(object.getPath().toString()), "CIM_Foo.k=1");
}

TEST(Handle, OfNothingSaysSo) {
    EXPECT_EQ(FailureOf([] { CIMInstance().getPropertyCount(); }), kUninitialized);
    EXPECT_EQ(FailureOf([] { CIMInstance().findProperty("a"); }), kUninitialized);
    EXPECT_EQ(FailureOf([] { CIMInstance().setPath(CIMObjectPath()); }), kUninitialized);
    EXPECT_EQ(FailureOf([] { CIMObject(CIMInstance()).getPath(); }), kUninitialized);
}

TEST(Handle, NeedsAName) {
    EXPECT_EQ(FailureOf([] { CIMInstance instance((CIMName())); }), kUninitialized);
    EXPECT_EQ(FailureOf([] { CIMProperty property(CIMName(), true); }), kUninitialized);
    EXPECT_EQ(FailureOf([] { CIMQualifier qualifier(CIMName(), true); }), kUninitialized);
}

TEST(Instance, FindsItsPropertiesInAnyCase) {
    const CIMInstance instance = WithOne();
    EXPECT_EQ(instance.findProperty("nAME"), 0U);
    EXPECT_EQ(instance.findProperty("Nam"), PEG_NOT_FOUND);
    EXPECT_EQ(instance.findProperty(CIMName()), PEG_NOT_FOUND);
    EXPECT_EQ(FailureOf([&] { instance.findProperty("a b"); }),
              "InvalidNameException [The CIM name is not valid: a b]");
    EXPECT_EQ(FailureOf([&] { instance.getProperty(1); }), kOutOfBounds);
    EXPECT_EQ(FailureOf([&] { instance.getProperty(PEG_NOT_FOUND); }), kOutOfBounds);
}

TEST(Instance, HasEachNameOnce) {
    CIMInstance instance = WithOne();
    EXPECT_EQ(FailureOf([&] { instance.addProperty(CIMProperty("NAME", true)); }),
              "AlreadyExistsException [already exists: property \"NAME\"]");
}

TEST(Instance, HasItsClassForAPath) {
    EXPECT_EQ(TextOf(WithOne().getPath().toString()), "CIM_Foo");
}

TEST(Property, HasEachQualifierOnce) {
    CIMProperty property("p", true);
    property.addQualifier(CIMQualifier("values", true));
    EXPECT_EQ(FailureOf([&] { property.addQualifier(CIMQualifier("values", true)); }),
              "AlreadyExistsException [already exists: qualifier \"values\"]");
    EXPECT_EQ(property.findQualifier("VALUES"), 0U);
    EXPECT_EQ(property.findQualifier("ValueMap"), PEG_NOT_FOUND);
    EXPECT_EQ(FailureOf([&] { property.getQualifier(1); }), kOutOfBounds);
}

}  // namespace
