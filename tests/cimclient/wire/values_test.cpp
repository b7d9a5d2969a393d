#include "cimclient/wire/reply_reading.h"
#include "object_model/value_body.h"

namespace {

using namespace Pegasus;
using namespace wire;
using Pegasus::detail::ValueAccess;
using support::ViewOf;

struct Reading {
    const char* type;
    const char* text;
    const char* value;  ///< null for an unreadable text
};

void ExpectReadings(const std::vector<Reading>& readings) {
    for (const Reading& reading : readings) {
        const std::string value =
            reading.value != nullptr ? " [" + std::string(reading.value) + "]" : " null";
        EXPECT_EQ(ValueOf(reading.type, reading.text), reading.type + value) << reading.text;
    }
}

TEST(Values, OfUnsignedTypes) {
    ExpectReadings({{"uint8", "0", "0"},
                    {"uint8", " 5 ", "5"},
                    {"uint8", "255", "255"},
                    {"uint8", "256", nullptr},
                    {"uint16", "0x1F", "31"},
                    {"uint16", "0X1f", "31"},
                    {"uint16", "65536", nullptr},
                    {"uint32", "0x00000001", "1"},
                    {"uint32", "4294967295", "4294967295"},
                    {"uint32", "4294967296", nullptr},
                    {"uint64", "18446744073709551615", "18446744073709551615"},
                    {"uint64", "18446744073709551616", nullptr},
                    {"uint64", "05", "5"},
                    {"uint64", "+5", "5"},
                    {"uint8", "-5", nullptr},
                    {"uint8", "5.0", nullptr},
                    {"uint8", "5e1", nullptr},
                    {"uint8", "0x", nullptr},
                    {"uint8", "5 5", nullptr},
                    {"uint8", "abc", nullptr},
                    {"uint8", "", nullptr}});
}

TEST(Values, OfSignedTypes) {
    ExpectReadings({{"sint8", "-128", "-128"},
                    {"sint8", "-0x80", "-128"},
                    {"sint8", "+7", "7"},
                    {"sint8", "-0", "0"},
                    {"sint8", "0x80", nullptr},
                    {"sint8", "-129", nullptr},
                    {"sint16", "-05", "-5"},
                    {"sint32", "0xFFFFFFFF", nullptr},
                    {"sint32", "-2147483648", "-2147483648"},
                    {"sint64", "-9223372036854775808", "-9223372036854775808"},
                    {"sint64", "9223372036854775807", "9223372036854775807"},
                    {"sint64", "9223372036854775808", nullptr},
                    {"sint64", "-9223372036854775809", nullptr},
                    {"sint64", "- 5", nullptr},
                    {"sint64", "", nullptr}});
}

TEST(Values, OfRealTypes) {
    ExpectReadings({{"real64", "1.5", "1.5000000000000000e+00"},
                    {"real64", ".5", "5.0000000000000000e-01"},
                    {"real64", "+1.5", "1.5000000000000000e+00"},
                    {"real64", "-1.5E-3", "-1.5000000000000000e-03"},
                    {"real64", "0", "0.0000000000000000e+00"},
                    {"real64", "100", "1.0000000000000000e+02"},
                    {"real64", "1e300", "1.0000000000000001e+300"},
                    {"real64", "0.1", "1.0000000000000001e-01"},
                    {"real64", "-0.0", "-0.0000000000000000e+00"},
                    {"real64", "1.5f", nullptr},
                    {"real64", "1.5e", nullptr},
                    {"real64", "NaN", nullptr},
                    {"real64", "INF", nullptr},
                    {"real64", "1.0e400", nullptr},
                    {"real64", "0x1p3", nullptr},
                    {"real64", "", nullptr},
                    {"real32", "1.5e3", "1.5000000000000000e+03"},
                    {"real32", "0.1", "1.0000000149011612e-01"},
                    {"real32", "1e-10", "1.0000000133514320e-10"},
                    {"real32", "3.5e38", "inf"},
                    {"real32", "1.0e-50", "0.0000000000000000e+00"}});
}

TEST(Values, OfOtherTypes) {
    ExpectReadings({{"boolean", "true", "TRUE"},
                    {"boolean", "FALSE", "FALSE"},
                    {"boolean", "tRuE", "TRUE"},
                    {"boolean", "1", nullptr},
                    {"boolean", "yes", nullptr},
                    {"boolean", "", nullptr},
                    {"char16", "A", "A"},
                    {"char16", "€", "€"},
                    {"char16", "&#32;", " "},
                    {"char16", "&#10;", "\n"},
                    {"char16", "ab", nullptr},
                    {"char16", "😀", nullptr},
                    {"char16", "", nullptr},
                    {"string", "", ""},
                    {"string", "a  b", "a  b"},
                    {"datetime", "20100507123553.000000+000", "20100507123553.000000+000"},
                    {"datetime", "00000001020304.567890:000", "00000001020304.567890:000"},
                    {"datetime", "", "00000000000000.000000:000"},
                    {"datetime", "2010-05-07", nullptr},
                    {"datetime", "20101307123553.000000+000", nullptr}});
}

TEST(Values, OfArraysKeepThePlacesOfWhatIsUnreadable) {
    const std::string none = "<VALUE.NULL/>";
    EXPECT_EQ(ArrayOf("uint16", ""), "uint16[] []");
    EXPECT_EQ(ArrayOf("uint16", "<VALUE>2</VALUE>" + none), "uint16[] [2  ]");
    EXPECT_EQ(ArrayOf("uint16", "<VALUE>x</VALUE><VALUE/><VALUE>3</VALUE>"), "uint16[] [  3 ]");
    EXPECT_EQ(ArrayOf("string", "<VALUE/><VALUE>a b</VALUE>" + none), "string[] [ a b  ]");
    EXPECT_EQ(ArrayOf("boolean", "<VALUE>true</VALUE><VALUE></VALUE>"), "boolean[] [TRUE  ]");
    EXPECT_EQ(ArrayOf("datetime", "<VALUE>20100507123553.000000+000</VALUE><VALUE>x</VALUE>"),
              "datetime[] [20100507123553.000000+000  ]");
    EXPECT_EQ(ArrayOf("sint64", "<VALUE>-1</VALUE><VALUE>0x10</VALUE>"), "sint64[] [-1 16 ]");
    EXPECT_EQ(ArrayOf("real32", "<VALUE>1.5</VALUE>"), "real32[] [1.5000000000000000e+00 ]");
    EXPECT_EQ(ArrayOf("char16", "<VALUE>a</VALUE><VALUE>b</VALUE>"), "char16[] [a b ]");
    EXPECT_EQ(ArrayOf("uint8", "<VALUE>1</VALUE><STRANGE>2</STRANGE><VALUE>3</VALUE>"),
              "uint8[] [1 3 ]");
}

TEST(Values, UnreadableInAnArrayAreEmptyTexts) {
    const CIMValue value = PropertyOf(
                               "<PROPERTY.ARRAY NAME=\"p\" TYPE=\"string\"><VALUE.ARRAY>"
                               "<VALUE>a</VALUE><VALUE.NULL/></VALUE.ARRAY>"
                               "</PROPERTY.ARRAY>")
                               .getValue();
    Array<String> texts;
    value.get(texts);
    ASSERT_EQ(texts.size(), 2U);
    EXPECT_EQ(support::TextOf(texts[0]), "a");
    EXPECT_EQ(support::TextOf(texts[1]), "");
}

std::string Embedded(const std::string& attributes, const std::string& content) {
    return ViewOf(PropertyOf("<PROPERTY NAME=\"p\" TYPE=\"string\" " + attributes + ">" + content +
                             "</PROPERTY>")
                      .getValue());
}

constexpr const char* kEscaped =
    "<VALUE>&lt;INSTANCE CLASSNAME=&quot;E&quot;&gt;&lt;PROPERTY NAME=&quot;a&quot; "
    "TYPE=&quot;uint8&quot;&gt;&lt;VALUE&gt;1&lt;/VALUE&gt;&lt;/PROPERTY&gt;&lt;/INSTANCE&gt;"
    "</VALUE>";
constexpr const char* kInCData =
    "<VALUE><![CDATA[<INSTANCE CLASSNAME=\"E\"><PROPERTY NAME=\"a\" TYPE=\"uint8\"><VALUE>1"
    "</VALUE></PROPERTY></INSTANCE>]]></VALUE>";
constexpr const char* kView =
    " [<INSTANCE CLASSNAME=\"E\" >\n<PROPERTY NAME=\"a\"  TYPE=\"uint8\">\n<VALUE>1</VALUE>\n"
    "</PROPERTY>\n</INSTANCE>\n]";

TEST(EmbeddedObjects, AreReadFromEscapedTextAndCData) {
    for (const char* content : {kEscaped, kInCData}) {
        EXPECT_EQ(Embedded("EmbeddedObject=\"object\"", content), std::string("object") + kView);
        EXPECT_EQ(Embedded("EMBEDDEDOBJECT=\"instance\"", content),
                  std::string("instance") + kView);
    }
}

TEST(EmbeddedObjects, AreKnownByQualifiersToo) {
    EXPECT_EQ(Embedded("",
                       "<QUALIFIER NAME=\"EmbeddedObject\" TYPE=\"boolean\"><VALUE>TRUE"
                       "</VALUE></QUALIFIER>" +
                           std::string(kEscaped)),
              std::string("object") + kView);
    EXPECT_EQ(Embedded("",
                       "<QUALIFIER NAME=\"EmbeddedInstance\" TYPE=\"string\"><VALUE>E</VALUE>"
                       "</QUALIFIER>" +
                           std::string(kEscaped)),
              std::string("instance") + kView);
}

TEST(EmbeddedObjects, StayTextWithoutASign) {
    EXPECT_EQ(Embedded("", "<VALUE>&lt;INSTANCE CLASSNAME=&quot;E&quot;/&gt;</VALUE>"),
              "string [<INSTANCE CLASSNAME=\"E\"/>]");
}

TEST(EmbeddedObjects, ThatAreNoneAreNull) {
    for (const char* content : {"<VALUE>garbage</VALUE>", "<VALUE></VALUE>", "",
                                "<VALUE>&lt;INSTANCE CLASSNAME=\"E\"></VALUE>"}) {
        EXPECT_EQ(Embedded("EmbeddedObject=\"object\"", content), "object null") << content;
    }
    EXPECT_EQ(
        Embedded("EmbeddedObject=\"instance\"", "<VALUE>&lt;CLASS NAME=\"K\">&lt;/CLASS></VALUE>"),
        "instance null");
}

TEST(EmbeddedObjects, MayBeClasses) {
    EXPECT_EQ(
        Embedded("EmbeddedObject=\"object\"", "<VALUE>&lt;CLASS NAME=\"K\">&lt;/CLASS></VALUE>"),
        "object [<CLASS NAME=\"K\" >\n</CLASS>\n]");
}

TEST(EmbeddedObjects, ComeInArraysToo) {
    const CIMValue value =
        PropertyOf(
            "<PROPERTY.ARRAY NAME=\"p\" TYPE=\"string\" EmbeddedObject=\"instance\">"
            "<VALUE.ARRAY>" +
            std::string(kEscaped) + kInCData + "</VALUE.ARRAY></PROPERTY.ARRAY>")
            .getValue();
    const std::string one = std::string(kView).substr(2, std::string(kView).size() - 3);
    EXPECT_EQ(ViewOf(value), "instance[] [" + one + " " + one + " ]");
}

TEST(EmbeddedObjects, ThatAreUnreadableKeepTheirPlacesInArrays) {
    const CIMValue value =
        PropertyOf(
            "<PROPERTY.ARRAY NAME=\"p\" TYPE=\"string\" EmbeddedObject=\"object\"><VALUE.ARRAY>"
            "<VALUE.NULL/><VALUE>&lt;CLASS NAME=\"K\"/&gt;</VALUE><VALUE>garbage</VALUE>"
            "</VALUE.ARRAY></PROPERTY.ARRAY>")
            .getValue();
    EXPECT_EQ(ViewOf(value), "object[] [ <CLASS NAME=\"K\" >\n</CLASS>\n  ]");
}

/// An embedded object in which one is embedded, and so on.
std::string NestedObjects(int depth) {
    std::string text = "<INSTANCE CLASSNAME=\"E\"></INSTANCE>";
    for (int i = 0; i < depth; ++i) {
        std::string escaped;
        for (const char c : text) {
            escaped += c == '<' ? "&lt;" : c == '&' ? "&#38;" : std::string(1, c);
        }
        text =
            "<INSTANCE CLASSNAME=\"E\"><PROPERTY NAME=\"p\" TYPE=\"string\" "
            "EmbeddedObject=\"object\"><VALUE>" +
            escaped + "</VALUE></PROPERTY></INSTANCE>";
    }
    return text;
}

std::string PropertiesIn(const std::string& instance) {
    const std::size_t begin = instance.find('>') + 1;
    return instance.substr(begin, instance.rfind('<') - begin);
}

/// How many objects are embedded one within the other.
int DepthOf(CIMValue value) {
    int depth = 0;
    while (!value.isNull()) {
        const CIMObject object = ValueAccess::BodyOf(value).objects[0];
        if (object.getPropertyCount() == 0) {
            break;
        }
        value = object.getProperty(0).getValue();
        ++depth;
    }
    return depth;
}

TEST(EmbeddedObjects, WithinOthersAreReadToALimit) {
    const auto depth_of = [](int depth) {
        return DepthOf(ValueAccess::MakeScalar(
            CIMTYPE_OBJECT,
            InstanceOf(support::NamedInstance("1", PropertiesIn(NestedObjects(depth))))));
    };
    EXPECT_EQ(depth_of(1), 1);
    EXPECT_EQ(depth_of(5), 5);
    EXPECT_LT(depth_of(24), 24) << "the deepest are unreadable";
}

std::string Reference(const std::string& content) {
    return ViewOf(PropertyOf("<PROPERTY.REFERENCE NAME=\"p\" REFERENCECLASS=\"Y\">" + content +
                             "</PROPERTY.REFERENCE>")
                      .getValue());
}

TEST(References, AreReadWithThePartsTheyHave) {
    const std::string name =
        "<INSTANCENAME CLASSNAME=\"Y\"><KEYBINDING NAME=\"k\"><KEYVALUE "
        "VALUETYPE=\"numeric\">1</KEYVALUE></KEYBINDING></INSTANCENAME>";
    const std::string local =
        "<LOCALNAMESPACEPATH><NAMESPACE NAME=\"root\"/><NAMESPACE "
        "NAME=\"x\"/></LOCALNAMESPACEPATH>";
    const auto view = [](const std::string& content) {
        return Reference("<VALUE.REFERENCE>" + content + "</VALUE.REFERENCE>");
    };
    EXPECT_EQ(view(name), "reference [Y.k=1]");
    EXPECT_EQ(view("<LOCALINSTANCEPATH>" + local + name + "</LOCALINSTANCEPATH>"),
              "reference [root/x:Y.k=1]");
    EXPECT_EQ(view("<INSTANCEPATH><NAMESPACEPATH><HOST>h</HOST>" + local + "</NAMESPACEPATH>" +
                   name + "</INSTANCEPATH>"),
              "reference [//h/root/x:Y.k=1]");
    EXPECT_EQ(view("<CLASSNAME NAME=\"Y\"/>"), "reference [Y]");
    EXPECT_EQ(Reference(""), "reference null");
    EXPECT_EQ(Reference("<VALUE>Y.k=1</VALUE>"), "reference null");
}

}  // namespace
