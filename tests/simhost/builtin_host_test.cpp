#include "simhost/host_test.h"
#include "simhost/model.h"

namespace simhost_test {

namespace {

using ::testing::AllOf;
using ::testing::Ge;
using ::testing::HasSubstr;
using ::testing::Le;
using ::testing::Not;

class BuiltinHost : public HostTest {
protected:
    RawClient ServeAndConnect() {
        Serve(simhost::HostDescription::Builtin(), simhost::ServerOptions());
        return Connect();
    }
    static int Count(const std::string& text, const std::string& part) {
        int count = 0;
        for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
            ++count;
        }
        return count;
    }
    std::string All(const std::string& name_space, const std::string& class_name) {
        return client.Ask(Enumerate(name_space, class_name)).body;
    }
    int InstancesOf(const std::string& class_name, const std::string& name_space = "root/cimv2") {
        return Count(All(name_space, class_name), "<VALUE.NAMEDINSTANCE>");
    }
    /// How many instances of a class are associated at all.
    int Associated(const std::string& class_name, const std::string& association) {
        const simhost::HostDescription host = simhost::HostDescription::Builtin();
        const auto& provider = *host.host().FindNamespace("root/ibmsd");
        int associated = 0;
        for (const simhost::Instance& instance : provider.FindClass(class_name)->instances) {
            CallOptions options;
            options.parameters = ClassParameter("AssocClass", association);
            const std::string& id = instance.path.keys.front().value;
            const Reply reply =
                client.Ask(Associators("root/ibmsd", class_name, Key("DeviceID", id), options));
            associated += Count(reply.body, "<VALUE.OBJECTWITHPATH>");
        }
        return associated;
    }

    RawClient client = ServeAndConnect();
};

TEST_F(BuiltinHost, HasEveryClassFilled) {
    EXPECT_EQ(InstancesOf("OMC_Chassis"), 1);
    EXPECT_EQ(InstancesOf("VMware_HypervisorSoftwareIdentity"), 1);
    EXPECT_THAT(InstancesOf("VMware_ComponentSoftwareIdentity"), AllOf(Ge(115), Le(125)));
    EXPECT_EQ(InstancesOf("OMC_IpmiLogRecord"), 300);
    EXPECT_EQ(InstancesOf("VMware_Privilege"), 12);
    EXPECT_EQ(InstancesOf("VMware_EthernetPort"), 4);
    EXPECT_EQ(InstancesOf("VMware_KernelIPv4ProtocolEndpoint"), 2);
    EXPECT_EQ(InstancesOf("VMware_KernelIPv6ProtocolEndpoint"), 2);
    EXPECT_EQ(InstancesOf("IBM_ComputerSystem", "ibm/imm0/cimv2"), 1);
    EXPECT_EQ(InstancesOf("IBMSG_PCIDevice", "root/ibmsd"), 40);
    EXPECT_EQ(InstancesOf("IBMSG_PCIBridge", "root/ibmsd"), 16);
    EXPECT_EQ(InstancesOf("IBMSG_SystemSlot", "root/ibmsd"), 8);
    EXPECT_EQ(InstancesOf("IBMSG_SystemBoard", "root/ibmsd"), 1);
}

TEST_F(BuiltinHost, HasAThirdOfItsDevicesInSlotsAndAThirdOnBoard) {
    EXPECT_EQ(Associated("IBMSG_PCIDevice", "IBMSG_DeviceInSlot"), 13);
    EXPECT_EQ(Associated("IBMSG_PCIDevice", "IBMSG_OnBoardDevice"), 13);
}

TEST_F(BuiltinHost, HasBridgesOfEachPlace) {
    EXPECT_GT(Associated("IBMSG_PCIBridge", "IBMSG_DeviceInSlot"), 0);
    EXPECT_GT(Associated("IBMSG_PCIBridge", "IBMSG_OnBoardDevice"), 0);
}

TEST_F(BuiltinHost, IdentifiesItselfInParallelArrays) {
    EXPECT_THAT(
        All("ibm/imm0/cimv2", "IBM_ComputerSystem"),
        AllOf(HasSubstr("<VALUE>CIM:ProductName</VALUE>"), HasSubstr("<VALUE>CIM:GUID</VALUE>"),
              HasSubstr("<VALUE>CIM:Model:SerialNumber</VALUE>"),
              HasSubstr("<VALUE>8871AC1:06KPZR7</VALUE>")));
}

TEST_F(BuiltinHost, HasTheTextsThatRealHostsHave) {
    const std::string packages = All("root/cimv2", "VMware_ComponentSoftwareIdentity");
    EXPECT_THAT(packages, HasSubstr("ゲストツール"));
    EXPECT_THAT(packages, HasSubstr("&lt;command line&gt; &amp; &quot;agent&quot;"));
    // Some lack their date, some have no description.
    EXPECT_LT(Count(packages, "\"InstallDate\""), Count(packages, "<VALUE.NAMEDINSTANCE>"));
    EXPECT_THAT(packages, HasSubstr("<PROPERTY NAME=\"Description\"  TYPE=\"string\">\n</PROP"));
}

TEST_F(BuiltinHost, SendsValueMapsWithAssociatedObjectsOnly) {
    EXPECT_THAT(All("root/ibmsd", "IBMSG_SystemSlot"), Not(HasSubstr("ValueMap")));
    CallOptions options;
    options.parameters = Parameter("IncludeQualifiers", "TRUE");
    EXPECT_THAT(
        client.Ask(Associators("root/ibmsd", "IBMSG_PCIDevice", Key("DeviceID", "pci0"), options))
            .body,
        HasSubstr("<QUALIFIER NAME=\"ValueMap\""));
}

}  // namespace

}  // namespace simhost_test
