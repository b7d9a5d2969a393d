// Instances, objects, properties and qualifiers: handles to shared bodies.
#include <gmock/gmock.h>

#include "Pegasus/Common/CIMClass.h"
#include "Pegasus/Common/CIMInstance.h"
#include "support/client_view.h"

namespace {

using namespace Pegasus;
using support::FailureOf;
using support::TextOf;

constexpr const char* kUninitialized = "UninitializedObjectException [uninitialized object]";
constexpr const char* kOutOfBounds = "IndexOutOfBoundsException [index out of bounds]";
constexpr const char* kMismatch = "TypeMismatchException [type mismatch]";

CIMInstance WithOne() {
    CIMInstance instance(CIMName("CIM_Foo"));
    instance.addProperty(CIMProperty("Name", String("a")));
    return instance;
}

TEST(Handle, SharesItsBodyWithCopies) {
    CIMInstance instance = WithOne();
    const CIMInstance copy = instance;
    const CIMInstance clone = instance.clone();
    instance.getProperty(0).setValue(String("b"));
    instance.addProperty(CIMProperty("Other", Uint8(1)));
    EXPECT_EQ(TextOf(copy.getProperty(0).getValue().toString()), "b");
    EXPECT_EQ(copy.getPropertyCount(), 2U);
    EXPECT_EQ(TextOf(clone.getProperty(0).getValue().toString()), "a");
    EXPECT_EQ(clone.getPropertyCount(), 1U);
}

TEST(Handle, OfNothingSaysSo) {
    EXPECT_TRUE(CIMInstance().isUninitialized());
    EXPECT_TRUE(CIMProperty().isUninitialized());
    EXPECT_EQ(FailureOf([] { CIMInstance().getPropertyCount(); }), kUninitialized);
    EXPECT_EQ(FailureOf([] { CIMObject().toString(); }), kUninitialized);
    EXPECT_EQ(FailureOf([] { CIMProperty().getValue(); }), kUninitialized);
    EXPECT_EQ(FailureOf([] { CIMQualifier().getName(); }), kUninitialized);
    EXPECT_EQ(FailureOf([] { WithOne().addProperty(CIMProperty()); }), kUninitialized);
}

TEST(Handle, NeedsAName) {
    EXPECT_EQ(FailureOf([] { CIMInstance instance((CIMName())); }), kUninitialized);
    EXPECT_EQ(FailureOf([] { CIMProperty property(CIMName(), Uint8(1)); }), kUninitialized);
    EXPECT_EQ(FailureOf([] { CIMQualifier qualifier(CIMName(), Uint8(1)); }), kUninitialized);
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
    EXPECT_EQ(FailureOf([] { WithOne().removeProperty(1); }), kOutOfBounds);
}

TEST(Instance, HasEachNameOnce) {
    CIMInstance instance = WithOne();
    EXPECT_EQ(FailureOf([&] { instance.addProperty(CIMProperty("NAME", Uint8(1))); }),
              "AlreadyExistsException [already exists: property \"NAME\"]");
    instance.addQualifier(CIMQualifier("values", Uint8(1)));
    EXPECT_EQ(FailureOf([&] { instance.addQualifier(CIMQualifier("values", Uint8(1))); }),
              "AlreadyExistsException [already exists: qualifier \"values\"]");
}

TEST(Instance, HasItsClassForAPath) {
    EXPECT_EQ(TextOf(WithOne().getPath().toString()), "CIM_Foo");
}

TEST(Property, ChecksWhatItIsMadeOf) {
    EXPECT_EQ(FailureOf([] { CIMProperty property("p", Uint8(1), 0, "Other"); }), kMismatch);
    EXPECT_EQ(FailureOf([] { CIMProperty property("p", Uint8(1), 3); }), kMismatch);
    EXPECT_EQ(FailureOf([] { CIMProperty property("p", Array<Uint8>(2), 3); }), kMismatch);
    CIMProperty sized("p", Array<Uint8>(3), 3);
    EXPECT_EQ(sized.getArraySize(), 3U);
    EXPECT_EQ(CIMProperty("p", Array<Uint8>(3)).getArraySize(), 0U);
    EXPECT_EQ(FailureOf([&] { sized.setValue(Uint8(1)); }), kMismatch);
}

TEST(Property, KeepsItsQualifiersThroughClones) {
    CIMProperty property("p", Uint8(1));
    property.addQualifier(CIMQualifier("q", String("v")));
    const CIMProperty clone = property.clone();
    EXPECT_EQ(clone.getQualifierCount(), 1U);
    EXPECT_EQ(clone.findQualifier("Q"), 0U);
    property.removeQualifier(0);
    EXPECT_EQ(property.getQualifierCount(), 0U);
    EXPECT_EQ(clone.getQualifierCount(), 1U);
    EXPECT_FALSE(clone.identical(property));
    EXPECT_TRUE(clone.identical(clone.clone()));
}

TEST(Object, IsAnInstanceOrAClass) {
    const CIMObject object(WithOne());
    EXPECT_TRUE(object.isInstance());
    EXPECT_TRUE(CIMInstance(object).identical(WithOne()));
    constexpr const char* kCast = "DynamicCastFailedException [dynamic cast failed]";
    EXPECT_EQ(FailureOf([] { CIMInstance(CIMObject(CIMClass(CIMName("K")))); }), kCast);
    EXPECT_EQ(FailureOf([] { CIMInstance instance((CIMObject())); }), kCast);
}

}  // namespace
