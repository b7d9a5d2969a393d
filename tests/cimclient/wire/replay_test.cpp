// Requests and replies recorded between a stock client and two stock servers, played again.
#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <optional>
#include <regex>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string_view>

#include "cimclient/wire/wire_test.h"

namespace {

using namespace Pegasus;
using support::Conversation;
using support::RecordedRequest;
using support::TextOf;
using support::ViewOf;

struct Call {
    const char* ns;
    const char* class_name;
    const char* source = nullptr;  ///< of Associators
    const char* result_class = nullptr;
};

/// The calls that both recordings are of, in this order.
constexpr Call kCalls[] = {
    {"root/cimv2", "OMC_Chassis"},
    {"ibm/imm0/cimv2", "IBM_ComputerSystem"},
    {"root/cimv2", "VMware_HypervisorSoftwareIdentity"},
    {"root/cimv2", "VMware_ComponentSoftwareIdentity"},
    {"root/cimv2", "OMC_IpmiLogRecord"},
    {"root/cimv2", "VMware_Privilege"},
    {"root/cimv2", "VMware_EthernetPort"},
    {"root/cimv2", "VMware_KernelIPv4ProtocolEndpoint"},
    {"root/cimv2", "VMware_KernelIPv6ProtocolEndpoint"},
    {"root/ibmsd", "IBMSG_PCIDevice"},
    {"root/ibmsd", "IBMSG_DeviceInSlot", "pci0", "IBMSG_SystemSlot"},
    {"root/ibmsd", "IBMSG_OnBoardDevice", "pci0", "IBMSG_SystemBoard"},
    {"root/ibmsd", "IBMSG_DeviceInSlot", "pci1", "IBMSG_SystemSlot"},
    {"root/ibmsd", "IBMSG_OnBoardDevice", "pci1", "IBMSG_SystemBoard"},
    {"root/ibmsd", "IBMSG_DeviceInSlot", "pci2", "IBMSG_SystemSlot"},
    {"root/ibmsd", "IBMSG_OnBoardDevice", "pci2", "IBMSG_SystemBoard"},
    {"root/ibmsd", "IBMSG_DeviceInSlot", "pci3", "IBMSG_SystemSlot"},
    {"root/ibmsd", "IBMSG_OnBoardDevice", "pci3", "IBMSG_SystemBoard"},
    {"root/ibmsd", "IBMSG_PCIBridge"},
    {"root/ibmsd", "IBMSG_SystemSlot"},
    {"ibm/imm9/cimv2", "IBM_ComputerSystem"},
    {"root/cimv2", "VMware_NoSuchClass"},
    {"root/cimv2", "IBMSG_SystemSlot"},
};

/// Three clients made the calls, each in the namespaces that begin with its text.
constexpr std::string_view kClients[] = {"root/cimv2", "ibm/", "root/ibmsd"};

std::size_t ClientFor(std::string_view ns) {
    const auto* const found = std::ranges::find_if(
        kClients, [&](std::string_view prefix) { return ns.starts_with(prefix); });
    return static_cast<std::size_t>(found - kClients);
}

struct Recording {
    const char* name;
    const char* folder;
    std::size_t exchanges;
    std::size_t connections;
};

constexpr Recording kRecordings[] = {
    {"ChunkingServer", "exchanges", 23, 3},
    // It challenges each client, and announces a connection's end with the tenth answer.
    {"SmallFootprintServer", "exchanges-sfcb", 26, 5},
};

std::string FileText(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("no such recording: " + path.string());
    }
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

const std::regex kMessageId("<MESSAGE ID=\"[0-9]+\"");

struct Exchange {
    std::string request;
    std::string reply;  ///< with the message ID left to the server

    std::size_t client() const {
        std::smatch ns;
        std::regex_search(request, ns, std::regex("\r\nCIMObject: ([^\r]+)"));
        return ClientFor(std::regex_replace(ns[1].str(), std::regex("%2F"), "/"));
    }
    bool is_last_of_connection() const {
        return reply.find("\r\nConnection: close\r\n") != std::string::npos;
    }
};

/// In the order in which they were recorded.
std::vector<Exchange> ExchangesOf(const std::filesystem::path& folder) {
    std::set<std::filesystem::path> requests;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == ".request") {
            requests.insert(entry.path());
        }
    }
    std::vector<Exchange> exchanges;
    for (std::filesystem::path path : requests) {
        const std::string request = FileText(path);
        const std::string reply = FileText(path.replace_extension(".response"));
        exchanges.push_back(
            {request, std::regex_replace(reply, kMessageId, "<MESSAGE ID=\"@ID@\"")});
    }
    return exchanges;
}

/// The connections that the exchanges were made on: each client's first, then the others as they
/// were opened.
class Connections {
public:
    explicit Connections(const std::vector<Exchange>& exchanges) {
        for (const Exchange& exchange : exchanges) {
            Add(exchange);
        }
    }
    const std::vector<Conversation>& conversations() const { return conversations_; }
    /// The connection of each exchange.
    const std::vector<std::size_t>& used() const { return used_; }

private:
    void Add(const Exchange& exchange) {
        std::optional<std::size_t>& connection = current_[exchange.client()];
        if (!connection) {
            connection = conversations_.size();
            conversations_.emplace_back();
        }
        Conversation& conversation = conversations_[*connection];
        conversation = conversation + support::Replies({exchange.reply});
        used_.push_back(*connection);
        if (exchange.is_last_of_connection()) {
            conversation.push_back(support::Close());
            connection.reset();
        }
    }

    std::vector<Conversation> conversations_{std::size(kClients)};
    std::array<std::optional<std::size_t>, std::size(kClients)> current_{0, 1, 2};
    std::vector<std::size_t> used_;
};

/// Without what is different each time: port, message ID and the credentials themselves.
std::string Comparable(std::string request) {
    request = std::regex_replace(request, kMessageId, "<MESSAGE ID=\"\"");
    request = std::regex_replace(request, std::regex("\r\nHOST: 127.0.0.1:[0-9]+"), "\r\nHOST: ");
    return std::regex_replace(request, std::regex("\r\nAuthorization: Basic [^\r]+"),
                              "\r\nAuthorization: Basic ");
}

class Replay : public wire::WireTest, public ::testing::WithParamInterface<Recording> {
protected:
    static std::filesystem::path Folder() {
        return std::filesystem::path(KALVEX_TEST_DATA) / GetParam().folder;
    }

    void ConnectClients() {
        for (CIMClient& each : clients_) {
            each.connect("127.0.0.1", server->port(), "root", "secret");
        }
    }

    /// What the client's API gives for the call.
    std::string Play(const Call& call) {
        const std::string prefix = std::string(call.class_name) + " ";
        CIMClient& its_client = clients_[ClientFor(call.ns)];
        try {
            if (call.source == nullptr) {
                return ViewOfAll(prefix, its_client.enumerateInstances(call.ns, call.class_name));
            }
            const std::string path =
                "IBMSG_PCIDevice.DeviceID=\"" + std::string(call.source) + "\"";
            return ViewOfAll(
                prefix, its_client.associators(call.ns, CIMObjectPath(path.c_str()),
                                               call.class_name, call.result_class, "", "", true));
        } catch (const CIMException& error) {
            return prefix + "CIMException " + std::to_string(error.getCode()) + " " +
                   TextOf(error.getMessage()) + "\n";
        }
    }

private:
    template <class Object>
    static std::string ViewOfAll(const std::string& prefix, const Array<Object>& objects) {
        std::string view;
        for (Uint32 i = 0; i < objects.size(); ++i) {
            view += prefix + ViewOf(objects[i]);
        }
        return view;
    }

    std::array<CIMClient, std::size(kClients)> clients_;
};

TEST_P(Replay, SendsAndUnderstandsWhatTheStockClientDid) {
    const std::vector<Exchange> recorded = ExchangesOf(Folder());
    ASSERT_EQ(recorded.size(), GetParam().exchanges);
    const Connections connections(recorded);
    Serve(connections.conversations());
    ConnectClients();
    std::string view;
    for (const Call& call : kCalls) {
        view += Play(call);
    }
    EXPECT_EQ(view, FileText(Folder() / "client-view.txt"));

    const std::vector<RecordedRequest> sent = server->requests();
    ASSERT_EQ(sent.size(), recorded.size());
    for (std::size_t i = 0; i < sent.size(); ++i) {
        EXPECT_EQ(Comparable(sent[i].head + sent[i].body), Comparable(recorded[i].request));
    }
    EXPECT_EQ(ConnectionsUsed(), connections.used());
    EXPECT_EQ(server->connections(), GetParam().connections);
}

INSTANTIATE_TEST_SUITE_P(Of, Replay, ::testing::ValuesIn(kRecordings),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
