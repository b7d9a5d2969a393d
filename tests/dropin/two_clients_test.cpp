// The module in a program that has another client of the same names, whose symbols come first.
#include <dlfcn.h>
#include <gmock/gmock.h>

#include "common/log/log_control.h"
#include "module/exsi/kalvex.h"
#include "other_client.h"
#include "other_client_checks.h"
#include "simhost/server.h"

namespace {

using Zentar::Agentless::Kalvex;
using Zentar::ZentarAgentless::PhysicalPort;

class TwoClients : public ::testing::Test {
protected:
    TwoClients() : server_(simhost::HostDescription::Builtin(), Options()) {
        Zentar::SetLogSink(
            [this](const Zentar::LogMessage& message) { failures.push_back(message.text); });
        info.host = "127.0.0.1";
        info.port = server_.port();
        info.user = "root";
        info.password = "secret";
        info.connection_type = 1;
        info.connection_case = 2;
    }
    ~TwoClients() override { Zentar::SetLogSink({}); }

    static simhost::ServerOptions Options() {
        simhost::ServerOptions options;
        options.user = "root";
        options.password = "secret";
        return options;
    }
    static void ExpectModuleReadsPorts(Kalvex& host) {
        std::vector<PhysicalPort> ports;
        EXPECT_EQ(host.GetEthernetPorts(ports), 0);
        ASSERT_EQ(ports.size(), 4U);
        EXPECT_EQ(ports[0].name_, "vmnic0");
    }

    ZentarConnection::ConnectionInfo info;
    std::vector<std::string> failures;
    simhost::Server server_;
};

TEST_F(TwoClients, HaveTheirSymbolsWhereEveryLibraryLooksFirst) {
    for (const char* symbol :
         {"_ZN7Pegasus9CIMClientC1Ev", "_ZN7Pegasus6StringC1EPKc", "_ZTIN7Pegasus9ExceptionE"}) {
        EXPECT_NE(dlsym(RTLD_DEFAULT, symbol), nullptr) << symbol;
    }
}

TEST_F(TwoClients, BothWorkInTurns) {
    ExpectOtherClientWorks();
    Kalvex host(info);
    ExpectOtherClientWorks();
    ExpectModuleReadsPorts(host);
    ExpectOtherClientWorks();
    ExpectModuleReadsPorts(host);
    EXPECT_EQ(server_.counters().connections, 2U);
    EXPECT_EQ(Pegasus::CIMClient::Living(), 0);
}

TEST_F(TwoClients, EachCatchesItsOwnExceptions) {
    Kalvex host(info);
    simhost::Fault failure = simhost::Faults::CimErrorElement(1, "provider died");
    failure.times = 1;
    server_.InjectFault(failure);
    std::vector<PhysicalPort> ports;
    EXPECT_EQ(host.GetEthernetPorts(ports), 1);
    EXPECT_THAT(failures,
                ::testing::Contains("Enumerate instances failed with the reason: provider died"));
    ExpectOtherClientWorks();
    ExpectModuleReadsPorts(host);
}

TEST_F(TwoClients, TheModuleTakesNothingFromTheOther) {
    {
        Kalvex host(info);
        ExpectModuleReadsPorts(host);
        EXPECT_EQ(Pegasus::CIMClient::Living(), 0);
    }
    EXPECT_EQ(Pegasus::CIMClient::Living(), 0);
    EXPECT_THAT(failures, ::testing::IsEmpty());
}

}  // namespace
