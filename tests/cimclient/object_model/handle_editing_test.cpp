// Handles whose objects change, and handles made from others.
#include <gmock/gmock.h>

#include "Pegasus/Common/CIMClass.h"
#include "Pegasus/Common/CIMInstance.h"
#include "Pegasus/Common/CIMPropertyList.h"
#include "support/client_view.h"

namespace {

using namespace Pegasus;
using support::TextOf;

CIMInstance Described() {
    CIMInstance instance(CIMName("CIM_Foo"));
    instance.addQualifier(CIMQualifier("Version", String("1")));
    instance.addProperty(CIMProperty("Name", String("a")));
    return instance;
}

TEST(HandleEditing, QualifiersComeAndGo) {
    CIMInstance instance = Described();
    EXPECT_EQ(instance.findQualifier("VERSION"), 0U);
    EXPECT_EQ(TextOf(CIMConstInstance(instance).getQualifier(0).getName().getString()), "Version");
    instance.getQualifier(0).setName("Revision");
    EXPECT_EQ(instance.findQualifier("Version"), PEG_NOT_FOUND);
    EXPECT_THROW(instance.getQualifier(0).setName(CIMName()), UninitializedObjectException);
    instance.removeQualifier(0);
    EXPECT_EQ(instance.getQualifierCount(), 0U);
    EXPECT_THROW(instance.removeQualifier(0), IndexOutOfBoundsException);
}

TEST(HandleEditing, PropertiesComeAndGo) {
    CIMInstance instance = Described();
    instance.getProperty(0).setName("Title");
    EXPECT_EQ(instance.findProperty("title"), 0U);
    instance.removeProperty(0);
    EXPECT_EQ(instance.getPropertyCount(), 0U);
    EXPECT_THROW(instance.removeProperty(0), IndexOutOfBoundsException);
}

TEST(HandleEditing, QualifiersOfPropertiesComeAndGo) {
    CIMProperty property("Name", String("a"));
    property.addQualifier(CIMQualifier("Key", true));
    EXPECT_EQ(property.findQualifier("key"), 0U);
    EXPECT_EQ(TextOf(property.getQualifier(0).getName().getString()), "Key");
    EXPECT_TRUE(property.clone().identical(property));
    property.removeQualifier(0);
    EXPECT_EQ(property.getQualifierCount(), 0U);
    EXPECT_THROW(property.removeQualifier(0), IndexOutOfBoundsException);
}

TEST(HandleEditing, CopiesOfEachKindAreIdenticalAndApart) {
    const CIMInstance instance = Described();
    const CIMObject object(instance);
    EXPECT_TRUE(CIMConstInstance(instance).clone().identical(instance));
    EXPECT_TRUE(CIMConstInstance(object).identical(instance));
    EXPECT_TRUE(CIMConstObject(object).clone().identical(object));
    CIMObject clone = object.clone();
    clone.removeProperty(0);
    EXPECT_FALSE(clone.identical(object));
    EXPECT_EQ(TextOf(CIMConstObject(instance).toString()), TextOf(object.toString()));
}

TEST(HandleEditing, ClassesAreNoInstances) {
    const CIMObject object(CIMClass(CIMName("CIM_Foo")));
    EXPECT_TRUE(object.isClass());
    EXPECT_FALSE(object.isInstance());
    EXPECT_EQ(TextOf(CIMClass(object).getClassName().getString()), "CIM_Foo");
    EXPECT_THROW((void)CIMInstance(object), DynamicCastFailedException);
    EXPECT_THROW((void)CIMClass(CIMObject(Described())), DynamicCastFailedException);
}

TEST(HandleEditing, PropertyListsTellNoneFromNull) {
    CIMPropertyList list;
    EXPECT_EQ(TextOf(list.toString()), "NULL");
    list.set(Array<CIMName>());
    EXPECT_EQ(TextOf(list.toString()), "EMPTY");
    Array<CIMName> names;
    names.append(CIMName("A"));
    names.append(CIMName("B"));
    list.set(names);
    EXPECT_EQ(TextOf(list.toString()), "A, B");
    EXPECT_TRUE(list.contains(CIMName("a")));
    EXPECT_FALSE(list.contains(CIMName("C")));
    names.append(CIMName());
    EXPECT_THROW(list.set(names), UninitializedObjectException);
    list.clear();
    EXPECT_TRUE(list.isNull());
}

}  // namespace
