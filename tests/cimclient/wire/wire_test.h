// The fixture of tests in which a client talks to a scripted server.
#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "Pegasus/Client/CIMClient.h"
#include "support/cim_replies.h"
#include "support/client_view.h"
#include "support/scripted_server.h"

namespace wire {

/// Short enough to be waited for, long enough for a busy machine to answer in.
constexpr unsigned kShortTimeout = 300;

class WireTest : public ::testing::Test {
protected:
    /// Plays the conversations, one connection each.
    void Serve(std::vector<support::Conversation> conversations);
    /// Serves, and connects the client.
    void Converse(std::vector<support::Conversation> conversations);
    /// Plays the replies on one connection, and connects the client.
    void ConverseOnce(const std::vector<std::string>& replies);

    /// By plain HTTP, as user "root" with password "secret".
    void Connect();
    std::string ConnectOutcome();

    /// What an enumeration comes to: "2 objects", or the failure as FailureOf gives it.
    std::string Enumerate();
    /// What an enumeration comes to when the server's answer is this.
    std::string OutcomeOfAnswer(const std::string& answer);
    /// The same when the server closes the connection after it.
    std::string OutcomeOfLastWords(const std::string& answer);

    /// The Authorization fields of all requests so far, empty where there was none.
    std::vector<std::string> Authorizations() const;
    /// The connections that the requests so far came on.
    std::vector<std::size_t> ConnectionsUsed() const;

    /// Makes a request large.
    static Pegasus::CIMName LongName(std::size_t bytes);

    std::unique_ptr<support::ScriptedServer> server;
    Pegasus::CIMClient client;
};

}  // namespace wire
