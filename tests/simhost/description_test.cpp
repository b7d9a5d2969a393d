#include <gmock/gmock.h>

#include <cstdio>
#include <fstream>

#include "simhost/host_description.h"
#include "simhost/model.h"

namespace {

using simhost::DescriptionError;
using simhost::HostDescription;

std::string ErrorOf(const std::string& json) {
    try {
        HostDescription::FromJson(json, "my.json");
    } catch (const DescriptionError& error) {
        return error.what();
    }
    return "no error";
}

/// A host with one class in root/cimv2, given by its members.
std::string WithClass(const std::string& members) {
    return R"({"namespaces": {"root/cimv2": {"classes": {"Card": {)" + members + "}}}}}";
}

/// The same class with a text key and whatever instances.
std::string WithInstances(const std::string& instances) {
    return WithClass(R"("keys": ["Id"], "properties": {"Id": "string", "N": "uint8", "B": "boolean",
                     "R": "real32", "A": "uint16[]"}, "instances": )" +
                     instances);
}

const simhost::Instance& OnlyInstance(const HostDescription& host) {
    return host.host().namespaces.front().classes.front().instances.front();
}

std::string XmlOf(const std::string& property, const std::string& value) {
    const auto host = HostDescription::FromJson(
        WithInstances("[{\"Id\": \"1\", \"" + property + "\": " + value + "}]"), "my.json");
    return OnlyInstance(host).values.back().xml;
}

TEST(Description, WritesEachTypeAsCimDoes) {
    EXPECT_EQ(XmlOf("N", "255"), "<VALUE>255</VALUE>\n");
    EXPECT_EQ(XmlOf("B", "true"), "<VALUE>TRUE</VALUE>\n");
    EXPECT_EQ(XmlOf("B", "false"), "<VALUE>FALSE</VALUE>\n");
    EXPECT_EQ(XmlOf("R", "1.5"), "<VALUE>1.5</VALUE>\n");
    EXPECT_EQ(XmlOf("R", "2"), "<VALUE>2.0</VALUE>\n");
    EXPECT_EQ(XmlOf("N", "null"), "");
    EXPECT_EQ(XmlOf("A", "[]"), "<VALUE.ARRAY>\n</VALUE.ARRAY>\n");
    EXPECT_EQ(XmlOf("A", "[1, null, 3]"),
              "<VALUE.ARRAY>\n<VALUE>1</VALUE>\n<VALUE.NULL/>\n<VALUE>3</VALUE>\n</VALUE.ARRAY>\n");
}

TEST(Description, SendsAStringAsItIsWhateverTheType) {
    EXPECT_EQ(XmlOf("N", "\" 7abc\""), "<VALUE>&#32;7abc</VALUE>\n");
    EXPECT_EQ(XmlOf("A", "[\"0x1F\"]"), "<VALUE.ARRAY>\n<VALUE>0x1F</VALUE>\n</VALUE.ARRAY>\n");
}

TEST(Description, SendsRawXmlInPlaceOfAValue) {
    EXPECT_EQ(XmlOf("N", R"({"xml": "<VALUE>&#8482;</VALUE>"})"), "<VALUE>&#8482;</VALUE>\n");
    EXPECT_EQ(XmlOf("A", R"([{"xml": "<ODD/>"}])"), "<VALUE.ARRAY>\n<ODD/>\n</VALUE.ARRAY>\n");
}

TEST(Description, RowsMayBeShorterThanTheirColumns) {
    const auto host = HostDescription::FromJson(
        WithClass(R"("keys": ["Id"], "properties": {"Id": "string", "N": "uint8"},
                  "columns": ["N", "Id"], "rows": [[1, "a"], [null, "b"]],
                  "instances": [{"Id": "c"}])"),
        "my.json");
    const auto& instances = host.host().namespaces.front().classes.front().instances;
    ASSERT_EQ(instances.size(), 3U);
    EXPECT_EQ(instances[0].path.Text(), "Card.Id=\"c\"");
    EXPECT_EQ(instances[0].values.size(), 1U);
    EXPECT_EQ(instances[1].values.size(), 2U);
    EXPECT_EQ(instances[2].values.back().xml, "");
}

TEST(Description, DefaultsFillWhatAnInstanceLeavesOut) {
    const auto host = HostDescription::FromJson(
        WithClass(R"("keys": ["Id"], "properties": {"Id": "string", "N": "uint8"},
                  "defaults": {"Id": "d", "N": 5}, "instances": [{}, {"N": 6}])"),
        "my.json");
    const auto& instances = host.host().namespaces.front().classes.front().instances;
    EXPECT_EQ(instances[0].path.Text(), "Card.Id=\"d\"");
    EXPECT_EQ(instances[0].values[1].xml, "<VALUE>5</VALUE>\n");
    EXPECT_EQ(instances[1].values[1].xml, "<VALUE>6</VALUE>\n");
}

TEST(Description, ASubclassMayStandBeforeItsSuperclass) {
    const auto host = HostDescription::FromJson(R"({"namespaces": {"root/cimv2": {"classes": {
        "Sub": {"superclass": "Base", "properties": {"Own": "string"}, "instances": [{"Id": "1"}]},
        "Base": {"keys": ["Id"], "properties": {"Id": "string"}}}}}})",
                                                "my.json");
    const auto& sub = host.host().namespaces.front().classes.front();
    ASSERT_EQ(sub.properties.size(), 2U);
    EXPECT_EQ(sub.properties[0].name, "Id");
    EXPECT_EQ(sub.properties[0].origin, "Base");
    EXPECT_EQ(sub.instances.front().path.Text(), "Sub.Id=\"1\"");
}

TEST(Description, IsReadFromAFile) {
    const std::string path = ::testing::TempDir() + "simhost-description.json";
    std::ofstream(path) << WithInstances("[{\"Id\": \"1\"}]");
    EXPECT_EQ(OnlyInstance(HostDescription::FromFile(path)).path.Text(), "Card.Id=\"1\"");
    std::remove(path.c_str());
}

TEST(Description, AFileThatCannotBeReadIsNamed) {
    const auto error_of = [](const std::string& path) {
        try {
            HostDescription::FromFile(path);
        } catch (const DescriptionError& error) {
            return std::string(error.what());
        }
        return std::string("no error");
    };
    EXPECT_EQ(error_of("/no/such/host.json"),
              "/no/such/host.json: cannot be read: No such file or directory: name a file with a "
              "host description");
    EXPECT_THAT(error_of("/"), ::testing::StartsWith("/: cannot be read: "));
}

TEST(Description, TheBuiltinTextIsADescription) {
    EXPECT_NO_THROW(HostDescription::FromJson(simhost::BuiltinHostText(), "built-in"));
}

TEST(Description, TextThatIsNoJsonIsReportedWithLineAndColumn) {
    EXPECT_THAT(ErrorOf("{\n \"name\": oops}"),
                ::testing::StartsWith("my.json: not valid JSON: parse error at line 2, column 10"));
    EXPECT_THAT(ErrorOf(""), ::testing::StartsWith("my.json: not valid JSON: "));
    EXPECT_EQ(ErrorOf("[1e400]"),
              "my.json: not valid JSON: number overflow parsing '1e400': correct the text there");
}

struct BadDescription {
    const char* name;
    std::string json;
    std::string message;
};

const std::string kClass = "/namespaces/root~1cimv2/classes/Card";

std::string Associated(const std::string& association) {
    return R"({"namespaces": {"root/cimv2": {"classes": {"Card": {"keys": ["Id"],
               "properties": {"Id": "string"}, "instances": [{"Id": "1"}]}},
               "associations": [)" +
           association + "]}}}";
}

const BadDescription kBad[] = {
    {"NotAnObject", "[]",
     "an object is expected, not array at the top level: write one with \"name\", \"namespaces\""},
    {"UnknownMember", R"({"nmae": "x", "namespaces": {}})",
     "unknown member \"nmae\" at /nmae: write one of \"name\", \"namespaces\""},
    {"UnknownMemberWithLineBreak", R"({"a\nb": "x", "namespaces": {}})",
     R"(unknown member "a\nb" at /a\nb: write one of "name", "namespaces")"},
    {"NoNamespaces", R"({"name": "x"})",
     "\"namespaces\" is missing at the top level: write {\"name\": \"esx01\", \"namespaces\": "
     "{\"root/cimv2\": {...}}}"},
    {"NamespaceName", R"({"namespaces": {"root//x": {}}})",
     "\"root//x\" is no namespace at /namespaces/root~1~1x: write names with / between them"},
    {"NamespaceTwice", R"({"namespaces": {"a": {}, "A": {}}})",
     "namespace \"A\" is described twice at /namespaces/A: merge the two"},
    {"ClassName", R"({"namespaces": {"a": {"classes": {"1x": {}}}}})",
     "\"1x\" is no CIM name at /namespaces/a/classes/1x: write letters, digits and underscores, no "
     "digit first"},
    {"ClassTwice", R"({"namespaces": {"a": {"classes": {"X": {}, "x": {}}}}})",
     "class \"x\" is described twice at /namespaces/a/classes/x: names differ in more than case; "
     "merge the two"},
    {"OwnAncestor",
     R"({"namespaces": {"a": {"classes": {"X": {"superclass": "Y"}, "Y": {"superclass": "X"}}}}})",
     "class X descends from itself at /namespaces/a/classes/X: correct \"superclass\""},
    {"UnknownType", WithClass(R"("properties": {"N": "uint61"})"),
     "unknown type \"uint61\" at " + kClass +
         "/properties/N: write one of boolean, uint8, uint16, uint32, uint64, sint8, sint16, "
         "sint32, sint64, real32, real64, string, char16, datetime, with [] after it for an "
         "array"},
    {"TypeNoText", WithClass(R"("properties": {"N": 5})"),
     "a string is expected, not number at " + kClass +
         "/properties/N: write a type, such as \"string\" or \"uint16[]\""},
    {"TypeMissing", WithClass(R"("properties": {"N": {"qualifiers": {}}})"),
     "\"type\" is missing at " + kClass + "/properties/N: add \"type\": \"string\", for example"},
    {"KeyUndeclared", WithClass(R"("keys": ["Id"])"),
     "class Card has no property \"Id\" that can be a key at " + kClass +
         "/keys/0: declare it in \"properties\", not as an array"},
    {"NoKeys", WithClass(R"("properties": {"N": "uint8"}, "instances": [{"N": 1}])"),
     "class Card has instances but no keys at " + kClass + ": add \"keys\": [\"...\"]"},
    {"PropertyUndeclared", WithInstances(R"([{"Id": "1", "Colour": "red"}])"),
     "class Card has no property \"Colour\" at " + kClass +
         "/instances/0/Colour: declare it in \"properties\", or correct the name"},
    {"KeyMissing", WithInstances(R"([{"Id": "1"}, {"N": 1}])"),
     "the key \"Id\" is missing at " + kClass +
         "/instances/1: give every instance of Card a value for it"},
    {"KeyNull", WithInstances(R"([{"Id": null}])"),
     "a key needs one plain value at " + kClass +
         "/instances/0/Id: write a string, a number, true or false"},
    {"OutOfRange", WithInstances(R"([{"Id": "1", "N": 256}])"),
     "256 is out of range for uint8 at " + kClass +
         "/instances/0/N: write 0 to 255, or a string to send it all the same"},
    {"Negative", WithInstances(R"([{"Id": "1", "N": -1}])"),
     "-1 is out of range for uint8 at " + kClass +
         "/instances/0/N: write 0 to 255, or a string to send it all the same"},
    {"NumberForText", WithInstances(R"([{"Id": 1}])"),
     "a value of type string is expected, not number at " + kClass +
         "/instances/0/Id: write it in double quotes, or null"},
    {"NumberForBoolean", WithInstances(R"([{"Id": "1", "B": 1}])"),
     "a value of type boolean is expected, not number at " + kClass +
         "/instances/0/B: write true, false or null"},
    {"FractionForInteger", WithInstances(R"([{"Id": "1", "N": 1.5}])"),
     "a value of type uint8 is expected, not number at " + kClass +
         "/instances/0/N: write a whole number, a string or null"},
    {"BooleanForReal", WithInstances(R"([{"Id": "1", "R": true}])"),
     "a value of type real32 is expected, not boolean at " + kClass +
         "/instances/0/R: write a number, a string or null"},
    {"ScalarForArray", WithInstances(R"([{"Id": "1", "A": 5}])"),
     "an array is expected, not number at " + kClass +
         "/instances/0/A: write [...], as the property is an array, or null"},
    {"ArrayForScalar", WithInstances(R"([{"Id": "1", "N": [5]}])"),
     "a value of type uint8 is expected, not array at " + kClass +
         "/instances/0/N: write one value, or declare the property as \"uint8[]\""},
    {"BadElement", WithInstances(R"([{"Id": "1", "A": [1, false]}])"),
     "a value of type uint16 is expected, not boolean at " + kClass +
         "/instances/0/A/1: write a whole number, a string or null"},
    {"BadXml", WithInstances(R"([{"Id": "1", "N": {"yml": ""}}])"),
     "unknown member \"yml\" at " + kClass + "/instances/0/N/yml: write one of \"xml\""},
    {"RowTooLong", WithClass(R"("keys": ["Id"], "properties": {"Id": "string"}, "columns": ["Id"],
               "rows": [["a"], ["b", 2]])"),
     "the row has 2 values for 1 columns at " + kClass +
         "/rows/1: add the missing columns, or drop values"},
    {"RowsWithoutColumns", WithClass(R"("rows": [])"),
     "\"columns\" and \"rows\" belong together at " + kClass + ": write both or neither"},
    {"AssociationWithoutEnd", Associated(R"({"class": "X", "from": "Card.Id=\"1\""})"),
     "\"to\" is missing at /namespaces/root~1cimv2/associations/0: write {\"class\": "
     "\"Association\", \"from\": \"Class.Key=\\\"value\\\"\", \"to\": ...}"},
    {"AssociationToNobody",
     Associated(R"({"class": "X", "from": "Card.Id=\"1\"", "to": "Card.Id=\"2\""})"),
     "there is no instance \"Card.Id=\\\"2\\\"\" in root/cimv2 at "
     "/namespaces/root~1cimv2/associations/0/to: describe it, or correct the path"},
    {"AssociationToNoPath", Associated(R"({"class": "X", "from": "Card", "to": "Card"})"),
     "\"Card\" is no object path at /namespaces/root~1cimv2/associations/0/from: write "
     "Class.Key=\\\"value\\\", more keys after commas"},
};

class BadDescriptions : public ::testing::TestWithParam<BadDescription> {};

TEST_P(BadDescriptions, GiveOneMessageWithPlaceAndRemedy) {
    EXPECT_EQ(ErrorOf(GetParam().json), "my.json: " + GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(Each, BadDescriptions, ::testing::ValuesIn(kBad),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
