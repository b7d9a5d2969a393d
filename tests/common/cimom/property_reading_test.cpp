// Properties as text, from what a host sends.
#include "common/cimom/src/cimfunc.h"
#include "support/inventory_test.h"

namespace {

using support::HostBuilder;
using ::testing::ElementsAre;
using Zentar::CimConnection;
using Zentar::PropertyMap;

/// A host with one device, and one part in it, of class "Part".
class PropertyReading : public support::InventoryTest {
protected:
    void ServePart(const std::string& instance) {
        HostBuilder host;
        Serve(host.Class("root/cimv2", "Device", R"({"Id": "string"})", R"([{"Id": "d"}])")
                  .Class("root/cimv2", "Part", R"({"Tag": "string", "Label": "string",
                         "Codes": "uint16[]",
                         "Mode": {"type": "uint16", "qualifiers": {"ValueMap": ["2", "3"]}},
                         "Health": {"type": "uint16", "qualifiers":
                                    {"ValueMap": ["2", "3"], "Values": ["OK", "Degraded"]}}})",
                         "[" + instance + "]")
                  .Association("root/cimv2", "PartOfDevice", "Device.Id=\"d\"", "Part.Tag=\"p\""));
        connection_ =
            std::make_unique<CimConnection>(Pegasus::CIMNamespaceName("root/cimv2"), info);
    }
    /// The part as an associated object, which comes with its qualifiers.
    PropertyMap ReadObject(PropertyMap properties) {
        Pegasus::Array<Pegasus::CIMObject> objects;
        EXPECT_EQ(
            Zentar::GetCIMArrayFromAssociators(
                Pegasus::CIMObjectPath(Pegasus::String("Device.Id=\"d\"")),
                Pegasus::CIMName("PartOfDevice"), Pegasus::CIMName("Part"), *connection_, objects),
            0);
        log.Clear();
        Zentar::GetPropertiesFromObject(objects[0], properties);
        return properties;
    }
    /// The part as an enumerated instance, which comes without.
    PropertyMap ReadInstance(PropertyMap properties) {
        Pegasus::Array<Pegasus::CIMInstance> instances;
        EXPECT_EQ(Zentar::GetCIMArrayFromEnumerateInstances(Pegasus::CIMName("Part"), *connection_,
                                                            instances, 300000),
                  0);
        log.Clear();
        Zentar::GetPropertiesFromInstance(instances[0], properties);
        return properties;
    }

private:
    std::unique_ptr<CimConnection> connection_;
};

TEST_F(PropertyReading, TranslatesAnAssociatedObjectsCodesIntoWords) {
    ServePart(R"({"Tag": "p", "Health": 3})");
    EXPECT_EQ(ReadObject({{"Health", ""}}), (PropertyMap{{"Health", "Degraded"}}));
    EXPECT_THAT(log.Messages(), ElementsAre("4 cimfunc.cpp Showing properties for "
                                            "//esx01/root/cimv2:Part.Tag=\"p\"",
                                            "4 cimfunc.cpp  processing value maps ...",
                                            "4 cimfunc.cpp _2-3_", "4 cimfunc.cpp _3-3_",
                                            "4 cimfunc.cpp Health = Degraded with raw data (3)"));
}

TEST_F(PropertyReading, EmptiesTheTextOfACodeThatTheMapLacks) {
    ServePart(R"({"Tag": "p", "Health": 5})");
    EXPECT_EQ(ReadObject({{"Health", "before"}}), (PropertyMap{{"Health", ""}}));
    EXPECT_EQ(log.Texts(4).back(), "Health =  with raw data (5)");
}

TEST_F(PropertyReading, KeepsTheCodeWhereOnlyTheMapIsKnown) {
    ServePart(R"({"Tag": "p", "Mode": 3})");
    EXPECT_EQ(ReadObject({{"Mode", ""}}), (PropertyMap{{"Mode", "3"}}));
    EXPECT_EQ(log.Texts(4).back(), "Mode = 3 with raw data (3)");
}

TEST_F(PropertyReading, KeepsTheCodesOfEnumeratedInstances) {
    ServePart(R"({"Tag": "p", "Health": 3})");
    EXPECT_EQ(ReadInstance({{"Health", ""}}), (PropertyMap{{"Health", "3"}}));
}

TEST_F(PropertyReading, TrimsTextsAndShowsThemRaw) {
    ServePart(R"({"Tag": "p", "Label": "  abc\t\n"})");
    EXPECT_EQ(ReadInstance({{"Label", ""}}), (PropertyMap{{"Label", "abc"}}));
    EXPECT_THAT(log.Messages(), ElementsAre("4 cimfunc.cpp Showing properties for Part.Tag=\"p\"",
                                            "4 cimfunc.cpp Label = abc with raw data (  abc\t\n)"));
}

TEST_F(PropertyReading, LeavesTheTextOfAMissingPropertyAlone) {
    ServePart(R"({"Tag": "p"})");
    EXPECT_EQ(ReadInstance({{"Label", "before"}}), (PropertyMap{{"Label", "before"}}));
    EXPECT_THAT(log.Messages(), ElementsAre("4 cimfunc.cpp Showing properties for Part.Tag=\"p\"",
                                            "2 cimfunc.cpp Property Label is not found!"));
}

TEST_F(PropertyReading, ReadsAnArrayWhole) {
    ServePart(R"({"Tag": "p", "Codes": [2, 3, 11]})");
    EXPECT_EQ(ReadInstance({{"Codes", ""}}), (PropertyMap{{"Codes", "2 3 11"}}));
    EXPECT_EQ(log.Texts(4).back(), "Codes = 2 3 11 with raw data (2 3 11 )");
}

}  // namespace
