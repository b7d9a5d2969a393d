// The fixture of tests that speak with a simulated host over a socket.
#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <string>

#include "simhost/cim_calls.h"
#include "simhost/raw_client.h"
#include "simhost/server.h"

namespace simhost_test {

class HostTest : public ::testing::Test {
protected:
    /// Two cards, of which the first is mounted in a slot.
    static simhost::HostDescription SmallHost();

    void Serve(const simhost::ServerOptions& options) { Serve(SmallHost(), options); }
    void Serve(const simhost::HostDescription& host,
               const simhost::ServerOptions& options = Http()) {
        server_ = std::make_unique<simhost::Server>(host, options);
    }
    static simhost::ServerOptions Http() {
        simhost::ServerOptions options;
        options.transport = simhost::Transport::kHttp;
        return options;
    }
    void StopServing() { server_.reset(); }

    /// By plain HTTP, with the small host, unless Serve() has said otherwise.
    simhost::Server& Server() {
        if (!server_) {
            Serve(Http());
        }
        return *server_;
    }
    RawClient Connect() { return RawClient(Server()); }
    Reply Ask(const std::string& request) { return Connect().Ask(request); }
    Reply AnswerWith(const simhost::Fault& fault) {
        Server().InjectFault(fault);
        return Ask(EnumerateCards());
    }

    static std::string EnumerateCards(const CallOptions& options = {}) {
        return Enumerate("root/cimv2", "Card", options);
    }
    static std::string AssociateFirstCard(const CallOptions& options = {}) {
        return Associators("root/cimv2", "Card", Key("Id", "c1"), options);
    }

private:
    std::unique_ptr<simhost::Server> server_;
};

}  // namespace simhost_test
