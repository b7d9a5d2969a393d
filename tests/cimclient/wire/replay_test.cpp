// Requests and replies recorded between a stock client and a stock server, played again.
#include <fstream>
#include <regex>
#include <sstream>
#include <stdexcept>

#include "cimclient/wire/wire_test.h"

namespace {

using namespace Pegasus;
using support::RecordedRequest;
using support::TextOf;
using support::ViewOf;

struct Exchange {
    const char* file;
    const char* ns;
    const char* class_name;
    const char* source = nullptr;  ///< of Associators
    const char* result_class = nullptr;
};

constexpr Exchange kExchanges[] = {
    {"01-EnumerateInstances-OMC_Chassis", "root/cimv2", "OMC_Chassis"},
    {"02-EnumerateInstances-IBM_ComputerSystem", "ibm/imm0/cimv2", "IBM_ComputerSystem"},
    {"03-EnumerateInstances-VMware_HypervisorSoftwareIdentity", "root/cimv2",
     "VMware_HypervisorSoftwareIdentity"},
    {"04-EnumerateInstances-VMware_ComponentSoftwareIdentity", "root/cimv2",
     "VMware_ComponentSoftwareIdentity"},
    {"05-EnumerateInstances-OMC_IpmiLogRecord", "root/cimv2", "OMC_IpmiLogRecord"},
    {"06-EnumerateInstances-VMware_Privilege", "root/cimv2", "VMware_Privilege"},
    {"07-EnumerateInstances-VMware_EthernetPort", "root/cimv2", "VMware_EthernetPort"},
    {"08-EnumerateInstances-VMware_KernelIPv4ProtocolEndpoint", "root/cimv2",
     "VMware_KernelIPv4ProtocolEndpoint"},
    {"09-EnumerateInstances-VMware_KernelIPv6ProtocolEndpoint", "root/cimv2",
     "VMware_KernelIPv6ProtocolEndpoint"},
    {"10-EnumerateInstances-IBMSG_PCIDevice", "root/ibmsd", "IBMSG_PCIDevice"},
    {"11-Associators-IBMSG_DeviceInSlot", "root/ibmsd", "IBMSG_DeviceInSlot", "pci0",
     "IBMSG_SystemSlot"},
    {"12-Associators-IBMSG_OnBoardDevice", "root/ibmsd", "IBMSG_OnBoardDevice", "pci0",
     "IBMSG_SystemBoard"},
    {"13-Associators-IBMSG_DeviceInSlot", "root/ibmsd", "IBMSG_DeviceInSlot", "pci1",
     "IBMSG_SystemSlot"},
    {"14-Associators-IBMSG_OnBoardDevice", "root/ibmsd", "IBMSG_OnBoardDevice", "pci1",
     "IBMSG_SystemBoard"},
    {"15-Associators-IBMSG_DeviceInSlot", "root/ibmsd", "IBMSG_DeviceInSlot", "pci2",
     "IBMSG_SystemSlot"},
    {"16-Associators-IBMSG_OnBoardDevice", "root/ibmsd", "IBMSG_OnBoardDevice", "pci2",
     "IBMSG_SystemBoard"},
    {"17-Associators-IBMSG_DeviceInSlot", "root/ibmsd", "IBMSG_DeviceInSlot", "pci3",
     "IBMSG_SystemSlot"},
    {"18-Associators-IBMSG_OnBoardDevice", "root/ibmsd", "IBMSG_OnBoardDevice", "pci3",
     "IBMSG_SystemBoard"},
    {"19-EnumerateInstances-IBMSG_PCIBridge", "root/ibmsd", "IBMSG_PCIBridge"},
    {"20-EnumerateInstances-IBMSG_SystemSlot", "root/ibmsd", "IBMSG_SystemSlot"},
    {"21-EnumerateInstances-IBM_ComputerSystem", "ibm/imm9/cimv2", "IBM_ComputerSystem"},
    {"22-EnumerateInstances-VMware_NoSuchClass", "root/cimv2", "VMware_NoSuchClass"},
    {"23-EnumerateInstances-IBMSG_SystemSlot", "root/cimv2", "IBMSG_SystemSlot"},
};

std::string FileText(const std::string& name) {
    std::ifstream file(std::string(KALVEX_TEST_DATA "/exchanges/") + name, std::ios::binary);
    if (!file) {
        throw std::runtime_error("no such recording: " + name);
    }
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

const std::regex kMessageId("<MESSAGE ID=\"[0-9]+\"");

/// With the message ID left to the server.
std::string ReplyOf(const Exchange& exchange) {
    return std::regex_replace(FileText(exchange.file + std::string(".response")), kMessageId,
                              "<MESSAGE ID=\"@ID@\"");
}

/// Without what is different each time: port, message ID and credentials.
std::string Comparable(std::string request) {
    request = std::regex_replace(request, kMessageId, "<MESSAGE ID=\"\"");
    request = std::regex_replace(request, std::regex("\r\nHOST: 127.0.0.1:[0-9]+"), "\r\nHOST: ");
    return std::regex_replace(request, std::regex("\r\nAuthorization: [^\r]+"), "");
}

class Replay : public wire::WireTest {
protected:
    void Play(const Exchange& exchange, std::string& view) {
        const std::string prefix = std::string(exchange.class_name) + " ";
        try {
            if (exchange.source == nullptr) {
                Append(view, prefix, client.enumerateInstances(exchange.ns, exchange.class_name));
            } else {
                const std::string path =
                    "IBMSG_PCIDevice.DeviceID=\"" + std::string(exchange.source) + "\"";
                Append(
                    view, prefix,
                    client.associators(exchange.ns, CIMObjectPath(path.c_str()),
                                       exchange.class_name, exchange.result_class, "", "", true));
            }
        } catch (const CIMException& error) {
            view += prefix + "CIMException " + std::to_string(error.getCode()) + " " +
                    TextOf(error.getMessage()) + "\n";
        }
    }

    template <class Object>
    static void Append(std::string& view, const std::string& prefix, const Array<Object>& objects) {
        for (Uint32 i = 0; i < objects.size(); ++i) {
            view += prefix + ViewOf(objects[i]);
        }
    }
};

TEST_F(Replay, SendsAndUnderstandsWhatTheStockClientDid) {
    std::vector<std::string> replies;
    for (const Exchange& exchange : kExchanges) {
        replies.push_back(ReplyOf(exchange));
    }
    ConverseOnce(replies);
    std::string view;
    for (const Exchange& exchange : kExchanges) {
        Play(exchange, view);
        const RecordedRequest sent = server->requests().back();
        EXPECT_EQ(Comparable(sent.head + sent.body),
                  Comparable(FileText(exchange.file + std::string(".request"))));
    }
    EXPECT_EQ(view, FileText("client-view.txt"));
    EXPECT_EQ(server->requests().size(), std::size(kExchanges));
}

}  // namespace
