// A host's replies, from bytes on a socket to records.
//
// An input is a letter for the operation and the replies that it gets, separated by
// kReplySeparator.
#include <cstdlib>
#include <functional>
#include <string_view>

#include "Pegasus/Client/CIMClient.h"
#include "common/log/log_control.h"
#include "module/exsi/kalvex.h"
#include "replaying_host.h"
#include "support/client_view.h"
#include "target.h"

namespace {

using namespace Pegasus;
using Zentar::Agentless::Kalvex;

/// An operation of the module keeps what the caller's list held, and adds nothing when it fails.
template <class Record, class Get>
void ReadList(Get get) {
    std::vector<Record> records(1);
    const int result = get(records);
    fuzz::Require(!records.empty() && (result == 0 || records.size() == 1));
}

template <class Record>
std::function<void(Kalvex&)> List(int (Kalvex::*get)(std::vector<Record>&)) {
    return [get](Kalvex& host) {
        ReadList<Record>([&](std::vector<Record>& records) { return (host.*get)(records); });
    };
}

std::function<void(Kalvex&)> Endpoints(int family) {
    return [family](Kalvex& host) {
        ReadList<ZTEXSI::IPProtocolData>(
            [&](auto& endpoints) { return host.GetIPProtocolInfo(endpoints, family); });
    };
}

struct ModuleOperation {
    char letter;
    std::function<void(Kalvex&)> run;
};

const ModuleOperation kModuleOperations[] = {
    {'s',
     [](Kalvex& host) {
         ZentarAgentless::ComputerSystem record;
         host.GetComputerSystem(record);
     }},
    {'h',
     [](Kalvex& host) {
         ZTEXSI::OperationSystem record;
         host.GetOperationSystem(record);
     }},
    {'p', List(&Kalvex::GetInstalledPackages)},
    {'i', List(&Kalvex::GetIpmiRecord)},
    {'v', List(&Kalvex::GetVMwarePrivilege)},
    {'n', List(&Kalvex::GetEthernetPorts)},
    {'4', Endpoints(0)},
    {'6', Endpoints(1)},
    {'d',
     [](Kalvex& host) {
         Pciinventory::Pciinfo info;
         host.GetPCIInfo(info);
     }},
    {'u', [](Kalvex& host) { host.IsUnSpportedEXSIVersion(); }},
};

void RunModule(const ModuleOperation& operation, std::uint16_t port) {
    Zentar::ZentarConnection::ConnectionInfo info;
    info.host = "127.0.0.1";
    info.port = port;
    info.user = "root";
    info.password = "secret";
    info.connection_case = 2;
    Kalvex host(info);
    operation.run(host);
}

/// Takes every text of every object.
template <class Objects>
void ViewAll(const Objects& objects) {
    for (Uint32 i = 0; i < objects.size(); ++i) {
        support::ViewOf(objects[i]);
    }
}

void RunClient(bool associators, std::uint16_t port) {
    const CIMNamespaceName ns("root/cimv2");
    try {
        CIMClient client;
        client.connect("127.0.0.1", port, "root", "secret");
        if (associators) {
            ViewAll(client.associators(ns, CIMObjectPath("A.b=1"), "C", "D", "", "", true));
        } else {
            ViewAll(client.enumerateInstances(ns, "A"));
        }
    } catch (const Exception& error) {
        error.getMessage().getCString();
    }
}

void Run(char letter, std::uint16_t port) {
    if (letter == 'e' || letter == 'a') {
        RunClient(letter == 'a', port);
    }
    for (const ModuleOperation& operation : kModuleOperations) {
        if (operation.letter == letter) {
            RunModule(operation, port);
        }
    }
}

}  // namespace

void fuzz::Try(std::string_view input) {
    static ReplayingHost host;
    static const bool logs_everything = [] {
        Zentar::SetMinLogLevel(4);
        Zentar::SetLogSink([](const Zentar::LogMessage& m) { Zentar::FormatLogMessage(m); });
        return true;
    }();
    if (input.empty() || !logs_everything) {
        return;
    }
    host.Answer(SplitReplies(input.substr(1)));
    Run(input.front(), host.port());
}
