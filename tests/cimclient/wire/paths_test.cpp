#include "cimclient/wire/reply_reading.h"

namespace {

using namespace Pegasus;
using namespace wire;
using support::BodyReturning;
using support::TextOf;
using support::ViewOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;

std::string Named(const std::string& keys) {
    return "<VALUE.NAMEDINSTANCE><INSTANCENAME CLASSNAME=\"X\">" + keys +
           "</INSTANCENAME><INSTANCE CLASSNAME=\"X\"/></VALUE.NAMEDINSTANCE>";
}

std::string Key(const std::string& name, const std::string& value, const std::string& type = "") {
    return "<KEYBINDING NAME=\"" + name + "\"><KEYVALUE" +
           (type.empty() ? "" : " VALUETYPE=\"" + type + "\"") + ">" + value +
           "</KEYVALUE></KEYBINDING>";
}

std::string PathOf(const std::string& keys) {
    return TextOf(InstanceOf(Named(keys)).getPath().toString());
}

std::string OutcomeOfKeys(const std::string& keys) {
    return OutcomeOfBody(BodyReturning(Named(keys)));
}

TEST(InstancePaths, HaveTheirKeysSortedByName) {
    EXPECT_EQ(PathOf(""), "X");
    EXPECT_EQ(
        PathOf(Key("b", "2", "numeric") + Key("A", "1", "string") + Key("c", "true", "boolean")),
        "X.A=\"1\",b=2,c=true");
    EXPECT_EQ(PathOf(Key("k", "1") + Key("k", "2")), "X.k=\"1\",k=\"2\"");
}

TEST(InstancePaths, KeepKeyTextsUncheckedButTrimmed) {
    EXPECT_EQ(PathOf(Key("a", "zz", "numeric") + Key("b", " x\" ") + Key("c", "")),
              "X.a=zz,b=\"x\\\"\",c=\"\"");
    EXPECT_EQ(PathOf("<KEYBINDING NAME=\"a\"><KEYVALUE TYPE=\"uint8\"/></KEYBINDING>"), "X.a=\"\"");
}

TEST(InstancePaths, MayHaveOneKeyWithoutAName) {
    EXPECT_EQ(PathOf("<KEYVALUE>v</KEYVALUE>"), "X.=\"v\"");
    EXPECT_EQ(PathOf("<VALUE.REFERENCE><INSTANCENAME CLASSNAME=\"Y\"/></VALUE.REFERENCE>"),
              "X.=\"Y\"");
}

TEST(InstancePaths, MayReferToOtherObjects) {
    EXPECT_EQ(PathOf("<KEYBINDING NAME=\"r\"><VALUE.REFERENCE><LOCALINSTANCEPATH>"
                     "<LOCALNAMESPACEPATH><NAMESPACE NAME=\"root\"/></LOCALNAMESPACEPATH>"
                     "<INSTANCENAME CLASSNAME=\"Y\">" +
                     Key("k", "1") +
                     "</INSTANCENAME></LOCALINSTANCEPATH></VALUE.REFERENCE></KEYBINDING>"),
              "X.r=\"root:Y.k=\\\"1\\\"\"");
}

TEST(InstancePaths, ReferringToEachOtherEndlesslyAreRefused) {
    std::string keys = Key("k", "v");
    for (int i = 0; i < 40; ++i) {
        keys = "<KEYBINDING NAME=\"r\"><VALUE.REFERENCE><INSTANCENAME CLASSNAME=\"Y\">" + keys +
               "</INSTANCENAME></VALUE.REFERENCE></KEYBINDING>";
    }
    EXPECT_THAT(OutcomeOfKeys(keys), StartsWith("CIMClientXmlException ["));
}

TEST(InstancePaths, NeedKnownKeyTypesAndLegalNames) {
    EXPECT_EQ(OutcomeOfKeys(Key("a", "1", "real")),
              "CIMClientXmlException [Semantic error: on line 6: Illegal value for "
              "KEYVALUE.VALUETYPE attribute; CIMValue must be one of \"string\", \"boolean\", or "
              "\"numeric\"]");
    EXPECT_EQ(OutcomeOfKeys(Key("9a", "1")),
              "CIMClientXmlException [Semantic error: on line 6: Illegal value for "
              "KEYBINDING.NAME attribute]");
}

std::string Namespaces(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) {
        text += "<NAMESPACE NAME=\"" + name + "\"/>";
    }
    return "<LOCALNAMESPACEPATH>" + text + "</LOCALNAMESPACEPATH>";
}

std::string InstancePath(const std::string& host, const std::vector<std::string>& names) {
    return "<INSTANCEPATH><NAMESPACEPATH><HOST>" + host + "</HOST>" + Namespaces(names) +
           "</NAMESPACEPATH><INSTANCENAME CLASSNAME=\"X\">" + Key("k", "v") +
           "</INSTANCENAME></INSTANCEPATH>";
}

const std::string kInstance =
    "<INSTANCE CLASSNAME=\"X\"><PROPERTY NAME=\"a\" TYPE=\"uint8\"><QUALIFIER NAME=\"q\" "
    "TYPE=\"string\"/><VALUE>1</VALUE></PROPERTY></INSTANCE>";

std::string WithPath(const std::string& path, const std::string& object = kInstance) {
    return "<VALUE.OBJECTWITHPATH>" + path + object + "</VALUE.OBJECTWITHPATH>";
}

TEST(ObjectPaths, HaveHostAndNamespace) {
    EXPECT_EQ(ViewOf(ObjectOf(WithPath(InstancePath(" esx01:5989 ", {"root", "x"})))),
              "//esx01:5989/root/x:X.k=\"v\"\n  a = [1] quals=1\n");
}

TEST(ObjectPaths, OfClassesAreClassPaths) {
    const CIMObject object =
        ObjectOf(WithPath("<CLASSPATH><NAMESPACEPATH><HOST>h</HOST>" + Namespaces({"root"}) +
                              "</NAMESPACEPATH><CLASSNAME NAME=\"K\"/></CLASSPATH>",
                          "<CLASS NAME=\"K\"><PROPERTY NAME=\"a\" TYPE=\"uint8\"/></CLASS>"));
    EXPECT_TRUE(Pegasus::detail::BodyOf(object).is_class);
    EXPECT_EQ(TextOf(object.getPath().toString()), "//h/root:K");
}

TEST(ObjectPaths, NeedHostAndNamespace) {
    const auto outcome = [](const std::string& path) {
        return OutcomeOfAssociators(WithPath(path));
    };
    EXPECT_EQ(outcome(InstancePath("bad host!", {"root"})),
              "CIMClientResponseException [malformed object name: bad host!, reason:\"invalid "
              "hostname\"]");
    EXPECT_THAT(outcome(InstancePath("[fe80::1]", {"root"})),
                HasSubstr("reason:\"invalid hostname\""));
    EXPECT_EQ(outcome(InstancePath("", {"root"})),
              "CIMClientXmlException [Validation error: on line 6: expected content of HOST "
              "element]");
    EXPECT_THAT(outcome(InstancePath("h", {})), StartsWith("CIMClientXmlException [Validation"));
    EXPECT_THAT(outcome(InstancePath("h", {"root/x"})), StartsWith("CIMClientXmlException ["));
    EXPECT_EQ(outcome(InstancePath("[::1]:5989", {"root"})), "1 objects");
}

TEST(ObjectPaths, MustBeOfTheObjectsClass) {
    EXPECT_EQ(
        OutcomeOfAssociators(WithPath(InstancePath("h", {"root"}), "<INSTANCE CLASSNAME=\"Z\"/>")),
        "CIMClientResponseException [type mismatch]");
}

TEST(ObjectPaths, ComeInOneFormOnly) {
    for (const std::string& other :
         {"<VALUE.OBJECT>" + kInstance + "</VALUE.OBJECT>",
          "<VALUE.OBJECTWITHLOCALPATH><LOCALINSTANCEPATH>" + Namespaces({"root"}) +
              "<INSTANCENAME CLASSNAME=\"X\"/></LOCALINSTANCEPATH>" + kInstance +
              "</VALUE.OBJECTWITHLOCALPATH>",
          Named(""), kInstance, WithPath(""),
          WithPath("<LOCALINSTANCEPATH>" + Namespaces({"root"}) +
                   "<INSTANCENAME CLASSNAME=\"X\"/></LOCALINSTANCEPATH>")}) {
        EXPECT_THAT(OutcomeOfAssociators(other), StartsWith("CIMClientXmlException [Validation"))
            << other;
    }
}

}  // namespace
