#include <gmock/gmock.h>

#include "common/cimom/src/cimfunc.h"
#include "common/cimom/src/host_access.h"
#include "support/recorded_log.h"

namespace {

using Pegasus::CIMInstance;
using Pegasus::CIMName;
using Pegasus::CIMProperty;
using Pegasus::CIMQualifier;
using Pegasus::CIMValue;
using Pegasus::String;
using ::testing::ElementsAre;
using Zentar::PropertyMap;

Pegasus::Array<String> Strings(std::initializer_list<const char*> texts) {
    Pegasus::Array<String> strings;
    for (const char* text : texts) {
        strings.append(String(text));
    }
    return strings;
}

/// A property with value-map qualifiers.
CIMProperty Mapped(const CIMValue& value, const CIMValue& value_map, const CIMValue& values) {
    CIMProperty property(CIMName("Health"), value);
    property.addQualifier(CIMQualifier(CIMName("ValueMap"), value_map));
    property.addQualifier(CIMQualifier(CIMName("Values"), values));
    return property;
}

CIMProperty MappedHealth(Pegasus::Uint16 code) {
    return Mapped(CIMValue(code), CIMValue(Strings({"2", "3"})),
                  CIMValue(Strings({"OK", "Degraded"})));
}

TEST(PropertyText, IsTheWordOfAMappedCode) {
    const support::RecordedLog log;
    EXPECT_EQ(Zentar::GetPropertyValueText(MappedHealth(3)), "Degraded");
    EXPECT_THAT(log.Messages(), ElementsAre("4 cimfunc.cpp  processing value maps ...",
                                            "4 cimfunc.cpp _2-3_", "4 cimfunc.cpp _3-3_"));
}

TEST(PropertyText, IsEmptyForACodeOutsideTheMap) {
    EXPECT_EQ(Zentar::GetPropertyValueText(MappedHealth(5)), "");
}

TEST(PropertyText, IsTheRawTextWithOnlyOneOfTheQualifiers) {
    CIMProperty property(CIMName("Health"), CIMValue(String(" 3 ")));
    property.addQualifier(CIMQualifier(CIMName("ValueMap"), CIMValue(Strings({"3"}))));
    EXPECT_EQ(Zentar::GetPropertyValueText(property), "3");
}

TEST(PropertyText, ComparesTheValueTrimmedAndTheMapAsItStands) {
    const CIMValue value(String(" 3 "));
    const CIMValue words(Strings({"OK", "Degraded"}));
    EXPECT_EQ(Zentar::GetPropertyValueText(Mapped(value, CIMValue(Strings({"2", "3"})), words)),
              "Degraded");
    EXPECT_EQ(Zentar::GetPropertyValueText(Mapped(value, CIMValue(Strings({"2", "3 "})), words)),
              "");
}

TEST(PropertyText, TakesTheFirstOfEqualMapEntriesAndItsWordAsItStands) {
    EXPECT_EQ(Zentar::GetPropertyValueText(Mapped(CIMValue(Pegasus::Uint16(3)),
                                                  CIMValue(Strings({"3", "3"})),
                                                  CIMValue(Strings({" first ", "second"})))),
              " first ");
}

TEST(PropertyText, IsEmptyWhenAMapQualifierIsNoArrayOrHasNoEntries) {
    const CIMValue code(Pegasus::Uint16(3));
    EXPECT_EQ(Zentar::GetPropertyValueText(
                  Mapped(code, CIMValue(String("3")), CIMValue(Strings({"OK"})))),
              "");
    EXPECT_EQ(Zentar::GetPropertyValueText(
                  Mapped(code, CIMValue(Strings({"3"})), CIMValue(String("OK")))),
              "");
    EXPECT_EQ(Zentar::GetPropertyValueText(
                  Mapped(code, CIMValue(Strings({})), CIMValue(Strings({"OK"})))),
              "");
}

TEST(PropertyText, OfAnArrayIsTheTextOfTheWholeArray) {
    EXPECT_EQ(Zentar::GetPropertyValueText(
                  CIMProperty(CIMName("Names"), CIMValue(Strings({"a", "b c", "d"})))),
              "a b c d");
}

TEST(Trim, RemovesBlanksTabsAndLineBreaksAtBothEnds) {
    EXPECT_EQ(Zentar::Trim("  abc\t\n"), "abc");
    EXPECT_EQ(Zentar::Trim("\f\v\r\n a b \r\n"), "a b");
    EXPECT_EQ(Zentar::Trim(" \f\n\t\r\v"), "");
    EXPECT_EQ(Zentar::Trim(""), "");
}

CIMInstance Server() {
    CIMInstance instance(CIMName("Server"));
    instance.addProperty(CIMProperty(CIMName("Name"), CIMValue(String("  abc\t\n"))));
    instance.addProperty(MappedHealth(2));
    return instance;
}

TEST(PropertyReader, FillsTheKeysInTheirOrderAndLogsTheRawData) {
    const support::RecordedLog log;
    PropertyMap properties{{"Name", ""}, {"Missing", "kept"}, {"Health", ""}};
    Zentar::GetPropertiesFromInstance(Server(), properties);
    EXPECT_EQ(properties, (PropertyMap{{"Name", "abc"}, {"Missing", "kept"}, {"Health", "OK"}}));
    EXPECT_THAT(log.Messages(),
                ElementsAre("4 cimfunc.cpp Showing properties for Server",
                            "4 cimfunc.cpp  processing value maps ...", "4 cimfunc.cpp _2-2_",
                            "4 cimfunc.cpp Health = OK with raw data (2)",
                            "2 cimfunc.cpp Property Missing is not found!",
                            "4 cimfunc.cpp Name = abc with raw data (  abc\t\n)"));
}

TEST(PropertyReader, FindsPropertiesWhateverTheirCase) {
    PropertyMap properties{{"NAME", ""}};
    Zentar::GetPropertiesFromInstance(Server(), properties);
    EXPECT_EQ(properties.at("NAME"), "abc");
}

/// An instance with a property whose value map is shorter than its value needs.
CIMInstance Broken() {
    CIMInstance instance(CIMName("Server"));
    instance.addProperty(Mapped(CIMValue(Pegasus::Uint16(3)), CIMValue(Strings({"2", "3"})),
                                CIMValue(Strings({"OK"}))));
    instance.addProperty(CIMProperty(CIMName("Name"), CIMValue(String("abc"))));
    return instance;
}

TEST(PropertyReader, GoesOnAfterAPropertyThatCannotBeRead) {
    const support::RecordedLog log(1);
    PropertyMap properties{{"Health", "kept"}, {"Name", ""}};
    Zentar::GetPropertiesFromInstance(Broken(), properties);
    EXPECT_EQ(properties, (PropertyMap{{"Health", "kept"}, {"Name", "abc"}}));
    EXPECT_THAT(log.Messages(),
                ElementsAre("1 cimfunc.cpp Get properties from CIM instance failed with the "
                            "reason: index out of bounds"));
}

TEST(PropertyReader, NotesNoMoreThanTheBeginningOfAClassName) {
    // The limit falls into a character of two bytes.
    const support::RecordedLog log(0);
    const std::string beginning(255, 'A');
    CIMInstance instance(CIMName(String((beginning + "\u00C4\u00C4").c_str())));
    instance.addProperty(Mapped(CIMValue(Pegasus::Uint16(3)), CIMValue(Strings({"2", "3"})),
                                CIMValue(Strings({"OK"}))));
    Zentar::HostAccess access;
    PropertyMap properties{{"Health", ""}};
    Zentar::GetPropertiesFromInstance(instance, properties, &access);
    EXPECT_EQ(access.TakeFailures().failures.at(0).class_name, beginning + "\u2026");
}

TEST(PropertyReader, SpeaksOfObjectsWhenReadingAnObject) {
    const support::RecordedLog log(1);
    PropertyMap properties{{"Health", ""}, {"Name", ""}};
    Zentar::GetPropertiesFromObject(Pegasus::CIMObject(Broken()), properties);
    EXPECT_EQ(properties.at("Name"), "abc");
    EXPECT_THAT(log.Messages(),
                ElementsAre("1 cimfunc.cpp Get properties from CIM object failed with the reason: "
                            "index out of bounds"));
}

TEST(PropertyReader, ReportsAnIllegalNameAndGoesOn) {
    const support::RecordedLog log(1);
    PropertyMap properties{{"9x", "kept"}, {"Name", ""}};
    Zentar::GetPropertiesFromInstance(Server(), properties);
    EXPECT_EQ(properties.at("9x"), "kept");
    EXPECT_EQ(properties.at("Name"), "abc");
    EXPECT_THAT(log.Messages(),
                ElementsAre("1 cimfunc.cpp Get properties from CIM instance failed with the "
                            "reason: The CIM name is not valid: 9x"));
}

}  // namespace
