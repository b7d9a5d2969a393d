#include "support/inventory_test.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <utility>

namespace support {

using Zentar::Agentless::Kalvex;
using Zentar::Agentless::KalvexCim;

InventoryTest::InventoryTest() {
    info.host = "127.0.0.1";
    info.connection_case = 2;
}

InventoryTest::~InventoryTest() {
    DuringPauses({});
    TakePauses();
}

simhost::ServerOptions InventoryTest::Http() {
    simhost::ServerOptions options;
    options.transport = simhost::Transport::kHttp;
    return options;
}

void InventoryTest::Serve(const HostBuilder& host, std::uint16_t port) {
    simhost::ServerOptions options = Http();
    options.port = port;
    Serve(host.Build(), options);
}

void InventoryTest::Serve(simhost::HostDescription host, simhost::ServerOptions options) {
    info.connection_type = options.transport == simhost::Transport::kHttps ? 1 : 0;
    info.user = options.user;
    info.password = options.password;
    server_ = std::make_unique<simhost::Server>(std::move(host), std::move(options));
    info.port = server_->port();
}

void InventoryTest::StopServing() { server_.reset(); }

simhost::Server& InventoryTest::Server() { return *server_; }

Kalvex& InventoryTest::Host() {
    if (!host_) {
        host_ = std::make_unique<Kalvex>(info);
        log.Clear();
    }
    return *host_;
}

KalvexCim& InventoryTest::Worker() {
    if (!worker_) {
        worker_ = std::make_unique<KalvexCim>(info);
        log.Clear();
    }
    return *worker_;
}

std::vector<std::string> InventoryTest::ConnectionAttemptLog() const {
    return {"3 cimfunc.cpp Connecting to " + info.user + ":**********@" + info.host + ":" +
                std::to_string(info.port),
            "4 cimfunc.cpp connection case is " + std::to_string(info.connection_case)};
}

std::vector<std::string> InventoryTest::ConnectionLog() const {
    return Joined({ConnectionAttemptLog(), {"3 cimfunc.cpp Cimserver connection succeeded "}});
}

std::vector<std::string> EnumerationCallLog(const std::string& class_name, const std::string& ns) {
    return {"3 cimfunc.cpp Calling GetCIMArrayFromEnumerateInstances()",
            "3 cimfunc.cpp The value of class name is:" + class_name,
            "3 cimfunc.cpp The value of cim namespace is:" + ns};
}

std::vector<std::string> EnumerationLog(const std::string& class_name, int count,
                                        const std::string& ns) {
    return Joined({EnumerationCallLog(class_name, ns),
                   {"3 cimfunc.cpp The size of ei_array is:" + std::to_string(count)}});
}

std::vector<std::string> AssociationCallLog(const std::string& source,
                                            const std::string& association,
                                            const std::string& result_class,
                                            const std::string& ns) {
    return {"3 cimfunc.cpp Calling GetCIMArrayFromAssociators()",
            "3 cimfunc.cpp The value of source class name is:" + source +
                "\nThe value of association class name is:" + association +
                "\nThe value of result class name is:" + result_class + "\n",
            "3 cimfunc.cpp The value of cim namespace is:" + ns};
}

std::vector<std::string> AssociationLog(const std::string& source, const std::string& association,
                                        const std::string& result_class, int count,
                                        const std::string& ns) {
    return Joined({AssociationCallLog(source, association, result_class, ns),
                   {"3 cimfunc.cpp The size of associators_array is:" + std::to_string(count)}});
}

std::vector<std::string> Joined(const std::vector<std::vector<std::string>>& parts) {
    std::vector<std::string> joined;
    for (const auto& part : parts) {
        joined.insert(joined.end(), part.begin(), part.end());
    }
    return joined;
}

std::uint16_t ClosedPort() {
    // Bound but never listening: connections are refused, and nobody else gets the port meanwhile.
    static const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
    static const std::uint16_t port = [] {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        ::bind(socket, reinterpret_cast<sockaddr*>(&address), size);
        ::getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size);
        return ntohs(address.sin_port);
    }();
    return port;
}

}  // namespace support
