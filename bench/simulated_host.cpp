#include "simulated_host.h"

#include <nlohmann/json.hpp>

#include "module_work.h"

namespace bench {

namespace {

using Json = nlohmann::ordered_json;

class SimulatedHost : public Service {
public:
    SimulatedHost(const simhost::HostDescription& description,
                  const simhost::ServerOptions& options)
        : server_(description, options) {}

    std::uint16_t port() const override { return server_.port(); }

    Counts counts() const override {
        const simhost::Counters seen = server_.counters();
        Counts counts;
        counts.connections = seen.connections;
        counts.handshakes = seen.tls_handshakes;
        counts.resumptions = seen.tls_resumptions;
        counts.requests = seen.requests;
        counts.challenges = seen.challenges;
        return counts;
    }

private:
    simhost::Server server_;
};

Json ClassOf(const char* key, std::initializer_list<const char*> properties) {
    Json description = {{"keys", {key}}, {"properties", {{key, "string"}}}};
    for (const char* property : properties) {
        description["properties"][property] = "string";
    }
    description["instances"] = Json::array();
    return description;
}

Json Association(const char* name, const std::string& from, const std::string& to) {
    return {{"class", name}, {"from", from}, {"to", to}};
}

}  // namespace

std::unique_ptr<Service> MakeSimulatedHost(const simhost::HostDescription& description,
                                           simhost::ServerOptions options) {
    options.user = kUser;
    options.password = kPassword;
    return std::make_unique<SimulatedHost>(description, options);
}

simhost::HostDescription HostOfDevices(std::size_t devices) {
    Json device = ClassOf("DeviceID", {"ClassCode"});
    Json slot = ClassOf("Tag", {"SlotAllInfo"});
    Json board = slot;
    slot["instances"].push_back({{"Tag", "s"}, {"SlotAllInfo", "Slot 1"}});
    board["instances"].push_back({{"Tag", "b"}, {"SlotAllInfo", "System board"}});
    Json bridge = device;
    bridge["instances"].push_back({{"DeviceID", "bridge"}, {"ClassCode", "6"}});
    Json associations = Json::array();
    associations.push_back(Association("IBMSG_DeviceInSlot", "IBMSG_PCIBridge.DeviceID=\"bridge\"",
                                       "IBMSG_SystemSlot.Tag=\"s\""));
    for (std::size_t i = 0; i < devices; ++i) {
        const std::string id = "pci" + std::to_string(i);
        device["instances"].push_back({{"DeviceID", id}, {"ClassCode", "2"}});
        associations.push_back(Association("IBMSG_OnBoardDevice",
                                           "IBMSG_PCIDevice.DeviceID=\"" + id + "\"",
                                           "IBMSG_SystemBoard.Tag=\"b\""));
    }
    const Json hardware = {{"classes",
                            {{"IBMSG_PCIDevice", device},
                             {"IBMSG_PCIBridge", bridge},
                             {"IBMSG_SystemSlot", slot},
                             {"IBMSG_SystemBoard", board}}},
                           {"associations", associations}};
    Json host = Json::parse(simhost::BuiltinHostText());
    host["namespaces"]["root/ibmsd"] = hardware;
    return simhost::HostDescription::FromJson(host.dump(), "host of devices");
}

}  // namespace bench
