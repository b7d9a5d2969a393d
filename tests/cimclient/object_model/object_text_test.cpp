// The XML texts of instances and classes.
#include "object_model/object_text.h"

#include <gmock/gmock.h>

#include "Pegasus/Common/CIMInstance.h"
#include "common/text/xml_escape.h"
#include "object_model/value_body.h"
#include "support/client_view.h"

namespace {

using namespace Pegasus;
using detail::ValueAccess;
using support::TextOf;

CIMInstance Sample() {
    CIMInstance instance(CIMName("EMB_Class"));
    Array<String> words;
    words.append("x");
    words.append("y z");
    instance.addProperty(CIMProperty("P1", String("v1")));
    instance.addProperty(CIMProperty("N", Uint32(7)));
    instance.addProperty(CIMProperty("Nul", CIMValue(CIMTYPE_STRING, false)));
    instance.addProperty(CIMProperty("SA", words));
    instance.addProperty(CIMProperty("B", Boolean(true)));
    instance.addProperty(CIMProperty("Q", String("q\"\\\n'x<&>")));
    return instance;
}

const char* const kSampleText =
    "<INSTANCE CLASSNAME=\"EMB_Class\" >\n"
    "<PROPERTY NAME=\"P1\"  TYPE=\"string\">\n<VALUE>v1</VALUE>\n</PROPERTY>\n"
    "<PROPERTY NAME=\"N\"  TYPE=\"uint32\">\n<VALUE>7</VALUE>\n</PROPERTY>\n"
    "<PROPERTY NAME=\"Nul\"  TYPE=\"string\">\n</PROPERTY>\n"
    "<PROPERTY.ARRAY NAME=\"SA\"  TYPE=\"string\">\n<VALUE.ARRAY>\n<VALUE>x</VALUE>\n"
    "<VALUE>y z</VALUE>\n</VALUE.ARRAY>\n</PROPERTY.ARRAY>\n"
    "<PROPERTY NAME=\"B\"  TYPE=\"boolean\">\n<VALUE>TRUE</VALUE>\n</PROPERTY>\n"
    "<PROPERTY NAME=\"Q\"  TYPE=\"string\">\n"
    "<VALUE>q&quot;\\&#10;&apos;x&lt;&amp;&gt;</VALUE>\n</PROPERTY>\n"
    "</INSTANCE>\n";

std::string TextOfObject(const CIMObject& object) {
    return TextOf(ValueAccess::MakeScalar(CIMTYPE_OBJECT, object).toString());
}

CIMInstance With(const CIMProperty& property) {
    CIMInstance instance(CIMName("E"));
    instance.addProperty(property);
    return instance;
}

TEST(ObjectText, OfAnInstanceHasOneElementALine) { EXPECT_EQ(TextOfObject(Sample()), kSampleText); }

TEST(ObjectText, OfAClassIsItsName) {
    detail::Shared<detail::ObjectBody> body(new detail::ObjectBody);
    body->path = CIMObjectPath("K");
    body->is_class = true;
    EXPECT_EQ(TextOfObject(CIMObject(body)), "<CLASS NAME=\"K\" >\n</CLASS>\n");
}

TEST(ObjectText, HasTheQualifiersBeforeTheValue) {
    CIMProperty property("p", true);
    property.addQualifier(CIMQualifier("Key", CIMValue(String("x"))));
    EXPECT_EQ(TextOfObject(With(property)),
              "<INSTANCE CLASSNAME=\"E\" >\n<PROPERTY NAME=\"p\"  TYPE=\"boolean\">\n"
              "<QUALIFIER NAME=\"Key\" TYPE=\"string\">\n<VALUE>x</VALUE>\n</QUALIFIER>\n"
              "<VALUE>TRUE</VALUE>\n</PROPERTY>\n</INSTANCE>\n");
}

TEST(ObjectText, HoldsReferencesAsPaths) {
    EXPECT_EQ(TextOfObject(With(CIMProperty(
                  "r", ValueAccess::MakeScalar(CIMTYPE_REFERENCE, String("Y.k=\"1\""))))),
              "<INSTANCE CLASSNAME=\"E\" >\n<PROPERTY.REFERENCE NAME=\"r\" >\n"
              "<VALUE.REFERENCE>\nY.k=&quot;1&quot;\n</VALUE.REFERENCE>\n</PROPERTY.REFERENCE>\n"
              "</INSTANCE>\n");
}

TEST(ObjectText, HoldsOtherObjectsAsTheirTexts) {
    const CIMObject inner(CIMInstance(CIMName("K")));
    EXPECT_EQ(
        TextOfObject(With(CIMProperty("o", ValueAccess::MakeScalar(CIMTYPE_INSTANCE, inner)))),
        "<INSTANCE CLASSNAME=\"E\" >\n"
        "<PROPERTY NAME=\"o\"  EmbeddedObject=\"instance\" TYPE=\"string\">\n"
        "<VALUE>&lt;INSTANCE CLASSNAME=&quot;K&quot; &gt;&#10;&lt;/INSTANCE&gt;&#10;</VALUE>\n"
        "</PROPERTY>\n</INSTANCE>\n");
}

CIMValue Embedded(const CIMObject& object) {
    return ValueAccess::MakeScalar(CIMTYPE_INSTANCE, object);
}

std::string Escaped(const std::string& text) {
    std::string escaped;
    Zentar::AppendXmlEscaped(escaped, text);
    return escaped;
}

TEST(ObjectText, IsEscapedOnceMoreWithEachLevel) {
    CIMInstance instance = Sample();
    std::string text = kSampleText;
    for (int level = 0; level < 16; ++level) {
        instance = With(CIMProperty("o", Embedded(instance)));
        text =
            "<INSTANCE CLASSNAME=\"E\" >\n"
            "<PROPERTY NAME=\"o\"  EmbeddedObject=\"instance\" TYPE=\"string\">\n<VALUE>" +
            Escaped(text) + "</VALUE>\n</PROPERTY>\n</INSTANCE>\n";
        EXPECT_EQ(TextOfObject(instance), text) << level;
        EXPECT_EQ(detail::BytesOfContent(Embedded(instance)), text.size()) << level;
    }
}

/// Two strings, or objects, between which one is unreadable.
template <class Element>
CIMValue Broken(CIMType type, Array<Element> detail::ValueBody::*elements, const Element& element) {
    detail::Shared<detail::ValueBody> body(new detail::ValueBody);
    for (int i = 0; i < 3; ++i) {
        (*body.*elements).append(element);
    }
    body->unreadable = {false, true, false};
    return ValueAccess::MakeArray(type, body);
}

TEST(ObjectText, MarksUnreadableElements) {
    EXPECT_EQ(TextOfObject(With(CIMProperty(
                  "a", Broken(CIMTYPE_UINT16, &detail::ValueBody::texts, String("1"))))),
              "<INSTANCE CLASSNAME=\"E\" >\n<PROPERTY.ARRAY NAME=\"a\"  TYPE=\"uint16\">\n"
              "<VALUE.ARRAY>\n<VALUE>1</VALUE>\n<VALUE.NULL/>\n<VALUE>1</VALUE>\n</VALUE.ARRAY>\n"
              "</PROPERTY.ARRAY>\n</INSTANCE>\n");
}

TEST(ObjectText, OfObjectsInAnArrayHasABlankAfterTheLastLine) {
    const CIMObject object(CIMInstance(CIMName("K")));
    EXPECT_EQ(
        TextOf(Broken(CIMTYPE_OBJECT, &detail::ValueBody::objects, object).toString()),
        "<INSTANCE CLASSNAME=\"K\" >\n</INSTANCE>\n  <INSTANCE CLASSNAME=\"K\" >\n</INSTANCE>\n ");
}

}  // namespace
