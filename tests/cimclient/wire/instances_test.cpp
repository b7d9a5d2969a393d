#include "cimclient/wire/reply_reading.h"

namespace {

using namespace Pegasus;
using namespace wire;
using support::BodyReturning;
using support::FailureOf;
using support::NamedInstance;
using support::TextOf;
using support::ViewOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;

std::string Property(const std::string& name, const std::string& value = "v") {
    return "<PROPERTY NAME=\"" + name + "\" TYPE=\"string\"><VALUE>" + value +
           "</VALUE></PROPERTY>";
}

TEST(Instances, ComeInTheServersOrderWithTheirPaths) {
    const CIMInstance instance =
        InstanceOf(NamedInstance("1", Property("b", "2") + Property("A", "1") +
                                          "<PROPERTY.ARRAY NAME=\"c\" TYPE=\"uint8\"><VALUE.ARRAY>"
                                          "<VALUE>3</VALUE></VALUE.ARRAY></PROPERTY.ARRAY>"));
    EXPECT_EQ(ViewOf(instance), "X.k=\"1\"\n  b = [2]\n  A = [1]\n  c = [3 ]\n");
    EXPECT_EQ(instance.findProperty("a"), 1U);
}

TEST(Instances, OfAnEnumerationComeNamedOnly) {
    const std::string instance = "<INSTANCE CLASSNAME=\"X\"></INSTANCE>";
    for (const std::string& other :
         {instance, "<VALUE.OBJECT>" + instance + "</VALUE.OBJECT>",
          std::string("<VALUE.OBJECTWITHPATH></VALUE.OBJECTWITHPATH>"),
          std::string("<VALUE.INSTANCEWITHPATH></VALUE.INSTANCEWITHPATH>")}) {
        EXPECT_THAT(OutcomeOfBody(BodyReturning(other)),
                    HasSubstr("Expected close of IRETURNVALUE element"))
            << other;
    }
}

TEST(Instances, NeedAPathAndABody) {
    EXPECT_THAT(OutcomeOfBody(BodyReturning("<VALUE.NAMEDINSTANCE><INSTANCE CLASSNAME=\"X\"/>"
                                            "</VALUE.NAMEDINSTANCE>")),
                StartsWith("CIMClientXmlException [Validation error: on line 6:"));
    EXPECT_THAT(OutcomeOfBody(BodyReturning("<VALUE.NAMEDINSTANCE><INSTANCENAME CLASSNAME=\"X\"/>"
                                            "</VALUE.NAMEDINSTANCE>")),
                StartsWith("CIMClientXmlException [Validation error: on line 6:"));
}

std::string OfClasses(const std::string& of_path, const std::string& of_instance) {
    return "<VALUE.NAMEDINSTANCE><INSTANCENAME CLASSNAME=\"" + of_path +
           "\"/><INSTANCE CLASSNAME=\"" + of_instance + "\"/></VALUE.NAMEDINSTANCE>";
}

TEST(Instances, MustBeOfTheirPathsClass) {
    EXPECT_EQ(OutcomeOfBody(BodyReturning(OfClasses("X", "Y"))),
              "CIMClientResponseException [type mismatch]");
    const CIMInstance instance = InstanceOf(OfClasses("Foo", "FOO"));
    EXPECT_EQ(TextOf(instance.getPath().getClassName().getString()), "Foo")
        << "the path's spelling counts";
}

TEST(Instances, MustHaveALegalClass) {
    EXPECT_EQ(OutcomeOfBody(BodyReturning(OfClasses("X", "9X"))),
              "CIMClientXmlException [Semantic error: on line 6: Illegal value for "
              "INSTANCE.CLASSNAME attribute]");
    EXPECT_EQ(OutcomeOfBody(BodyReturning("<VALUE.NAMEDINSTANCE><INSTANCENAME CLASSNAME=\"X\"/>"
                                          "<INSTANCE/></VALUE.NAMEDINSTANCE>")),
              "CIMClientXmlException [Validation error: on line 6: missing INSTANCE.CLASSNAME "
              "attribute]");
}

TEST(Instances, LoseOnlyWhatIsUnknownInThem) {
    EXPECT_EQ(NamesIn(Property("a") +
                      "<NEWELEMENT X=\"y\"><PROPERTY NAME=\"no\" TYPE=\"string\"/>"
                      "text</NEWELEMENT>stray text" +
                      Property("b")),
              "a b ");
}

TEST(Instances, LoseOnlyPropertiesThatCannotBeTaken) {
    for (const char* odd :
         {"<PROPERTY TYPE=\"string\"/>", "<PROPERTY NAME=\"x\"/>",
          "<PROPERTY NAME=\"9x\" TYPE=\"string\"/>", "<PROPERTY NAME=\"\" TYPE=\"string\"/>",
          "<PROPERTY NAME=\"x\" TYPE=\"String\"/>", "<PROPERTY NAME=\"x\" TYPE=\"reference\"/>",
          "<PROPERTY NAME=\"x\" TYPE=\"uint128\"/>", "<PROPERTY NAME=\"A\" TYPE=\"uint8\"/>"}) {
        EXPECT_EQ(NamesIn(Property("a") + odd + Property("b")), "a b ") << odd;
    }
}

TEST(Instances, CountTheFirstOfPropertiesWithOneName) {
    const CIMInstance instance =
        InstanceOf(NamedInstance("1", Property("a", "1") + Property("A", "2")));
    EXPECT_EQ(ViewOf(instance), "X.k=\"1\"\n  a = [1]\n");
}

TEST(Instances, MayHaveManyProperties) {
    std::string properties;
    for (int i = 0; i < 500; ++i) {
        properties += Property("p" + std::to_string(i), std::to_string(i));
    }
    CIMInstance instance = InstanceOf(NamedInstance("1", properties + Property("P7")));
    EXPECT_EQ(instance.getPropertyCount(), 500U);
    EXPECT_EQ(TextOf(instance.getProperty(instance.findProperty("P499")).getValue().toString()),
              "499");
}

TEST(Properties, MayTellMoreThanIsAskedFor) {
    const CIMConstProperty property = PropertyOf(
        "<PROPERTY.ARRAY NAME=\"p\" TYPE=\"uint8\" CLASSORIGIN=\"Base\" PROPAGATED=\"true\" "
        "ARRAYSIZE=\"3\"><VALUE.ARRAY><VALUE>1</VALUE><VALUE>2</VALUE></VALUE.ARRAY>"
        "</PROPERTY.ARRAY>");
    EXPECT_EQ(ViewOf(property.getValue()), "uint8[] [1 2 ]");
}

TEST(Properties, WithoutAValueAreNullOfTheirType) {
    for (const char* type :
         {"boolean", "uint8", "sint64", "real32", "char16", "string", "datetime"}) {
        const std::string name_and_type = std::string(" NAME=\"p\" TYPE=\"") + type + "\"";
        EXPECT_EQ(ViewOf(PropertyOf("<PROPERTY" + name_and_type + "/>").getValue()),
                  std::string(type) + " null");
        EXPECT_EQ(ViewOf(PropertyOf("<PROPERTY" + name_and_type + "></PROPERTY>").getValue()),
                  std::string(type) + " null");
        EXPECT_EQ(ViewOf(PropertyOf("<PROPERTY.ARRAY" + name_and_type + "/>").getValue()),
                  std::string(type) + "[] null");
    }
}

TEST(Properties, WithMisplacedValuesKeepTheRightOne) {
    const std::string text = "<VALUE>1</VALUE>";
    const std::string array = "<VALUE.ARRAY><VALUE>2</VALUE></VALUE.ARRAY>";
    const std::string scalar_property = "<PROPERTY NAME=\"p\" TYPE=\"string\">";
    const std::string array_property = "<PROPERTY.ARRAY NAME=\"p\" TYPE=\"string\">";
    EXPECT_EQ(ViewOf(PropertyOf(scalar_property + array + "</PROPERTY>").getValue()),
              "string null");
    EXPECT_EQ(ViewOf(PropertyOf(array_property + text + "</PROPERTY.ARRAY>").getValue()),
              "string[] null");
    EXPECT_EQ(ViewOf(PropertyOf(scalar_property + text + "<VALUE>3</VALUE></PROPERTY>").getValue()),
              "string [1]");
}

TEST(Qualifiers, AreReadWithTheirValues) {
    const CIMConstProperty property = PropertyOf(
        "<PROPERTY.ARRAY NAME=\"p\" TYPE=\"uint16\"><QUALIFIER NAME=\"Values\" TYPE=\"string\" "
        "TRANSLATABLE=\"true\" PROPAGATED=\"true\"><VALUE.ARRAY><VALUE>OK</VALUE><VALUE>Bad"
        "</VALUE></VALUE.ARRAY></QUALIFIER><QUALIFIER NAME=\"Key\" TYPE=\"boolean\" "
        "OVERRIDABLE=\"false\" TOSUBCLASS=\"false\" TOINSTANCE=\"true\"><VALUE>TRUE</VALUE>"
        "</QUALIFIER><QUALIFIER NAME=\"Void\" TYPE=\"string\"/><VALUE.ARRAY><VALUE>2</VALUE>"
        "</VALUE.ARRAY></PROPERTY.ARRAY>");
    ASSERT_EQ(property.getQualifierCount(), 3U);
    const CIMConstQualifier values = property.getQualifier(property.findQualifier("values"));
    EXPECT_EQ(ViewOf(values.getValue()), "string[] [OK Bad ]");
    const CIMConstQualifier key = property.getQualifier(1);
    EXPECT_EQ(ViewOf(key.getValue()), "boolean [TRUE]");
    EXPECT_EQ(ViewOf(property.getQualifier(2).getValue()), "string null");
    EXPECT_EQ(ViewOf(property.getValue()), "uint16[] [2 ]");
}

TEST(Qualifiers, ThatCannotBeTakenAreLostAlone) {
    const CIMConstProperty property = PropertyOf(
        "<PROPERTY NAME=\"p\" TYPE=\"string\"><QUALIFIER NAME=\"9\" TYPE=\"string\"/><QUALIFIER "
        "NAME=\"a\"/><QUALIFIER NAME=\"b\" TYPE=\"string\"/><QUALIFIER NAME=\"B\" TYPE=\"uint8\"/>"
        "<VALUE>v</VALUE><QUALIFIER NAME=\"late\" TYPE=\"string\"/></PROPERTY>");
    EXPECT_EQ(property.getQualifierCount(), 2U);
    EXPECT_EQ(TextOf(property.getQualifier(0).getName().getString()), "b");
    EXPECT_EQ(ViewOf(property.getValue()), "string [v]");
}

TEST(Qualifiers, OfAnInstanceAreRead) {
    const CIMInstance instance = InstanceOf(NamedInstance(
        "1", "<QUALIFIER NAME=\"Description\" TYPE=\"string\"><VALUE>x</VALUE></QUALIFIER>" +
                 Property("a")));
    const auto& qualifiers = Pegasus::detail::BodyOf(instance).qualifiers;
    ASSERT_EQ(qualifiers.size(), 1U);
    EXPECT_EQ(ViewOf(qualifiers[0].getValue()), "string [x]");
    EXPECT_EQ(instance.getPropertyCount(), 1U);
}

}  // namespace
