// The fixture of all tests that read a simulated host through the module.
#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "module/exsi/kalvex.h"
#include "module/exsi/kalvex_cim.h"
#include "simhost/server.h"
#include "support/host_builder.h"
#include "support/recorded_log.h"
#include "support/recorded_sleep.h"

namespace support {

class InventoryTest : public ::testing::Test {
protected:
    InventoryTest();
    ~InventoryTest() override;

    /// Puts a host on the network, by plain HTTP unless told otherwise.
    void Serve(const HostBuilder& host, std::uint16_t port = 0);
    void Serve(simhost::HostDescription host, simhost::ServerOptions options);
    static simhost::ServerOptions Http();
    void StopServing();
    simhost::Server& Server();

    /// How to reach the host. Tests that connect to no host may change it freely.
    ZentarConnection::ConnectionInfo info;

    /// The facade or the worker, connected on first use; the log is empty afterwards.
    Zentar::Agentless::Kalvex& Host();
    Zentar::Agentless::KalvexCim& Worker();

    /// What the access layer logs when it connects to the host, and when it starts to.
    std::vector<std::string> ConnectionLog() const;
    std::vector<std::string> ConnectionAttemptLog() const;

    RecordedLog log;

private:
    std::unique_ptr<simhost::Server> server_;
    std::unique_ptr<Zentar::Agentless::Kalvex> host_;
    std::unique_ptr<Zentar::Agentless::KalvexCim> worker_;
};

/// What the access layer logs when it asks for a class's instances, before any answer.
std::vector<std::string> EnumerationCallLog(const std::string& class_name,
                                            const std::string& ns = "root/cimv2");

/// What it logs for an enumeration that gives `count` instances.
std::vector<std::string> EnumerationLog(const std::string& class_name, int count,
                                        const std::string& ns = "root/cimv2");

/// The same for associated objects.
std::vector<std::string> AssociationCallLog(const std::string& source,
                                            const std::string& association,
                                            const std::string& result_class,
                                            const std::string& ns = "root/cimv2");
std::vector<std::string> AssociationLog(const std::string& source, const std::string& association,
                                        const std::string& result_class, int count,
                                        const std::string& ns = "root/cimv2");

/// Parts of an expected log, one after the other.
std::vector<std::string> Joined(const std::vector<std::vector<std::string>>& parts);

/// A port of this machine that refuses connections.
std::uint16_t ClosedPort();

}  // namespace support
