// The XML texts of instances and classes.
#include <gmock/gmock.h>

#include "Pegasus/Common/CIMClass.h"
#include "Pegasus/Common/CIMInstance.h"
#include "support/client_view.h"

namespace {

using namespace Pegasus;
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

TEST(ObjectText, EndsBeforeItFillsTheMemory) {
    CIMInstance instance(CIMName("EMB_Class"));
    instance.addProperty(CIMProperty("P", String(std::string(12'000'000, '"').c_str())));
    EXPECT_EQ(support::FailureOf([&] { CIMObject(instance).toString(); }),
              "Exception [The text of an object is too long.]");
}

TEST(ObjectText, OfAnInstanceHasOneElementALine) {
    EXPECT_EQ(TextOf(CIMObject(Sample()).toString()), kSampleText);
    EXPECT_EQ(TextOf(CIMValue(Sample()).toString()), kSampleText);
    EXPECT_EQ(TextOf(CIMValue(CIMObject(Sample())).toString()), kSampleText);
}

TEST(ObjectText, OfAClassIsItsName) {
    EXPECT_EQ(TextOf(CIMObject(CIMClass(CIMName("K"))).toString()),
              "<CLASS NAME=\"K\" >\n</CLASS>\n");
}

}  // namespace
