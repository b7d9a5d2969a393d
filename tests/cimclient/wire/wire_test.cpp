#include "cimclient/wire/wire_test.h"

namespace wire {

using namespace support;

void WireTest::Serve(std::vector<Conversation> conversations) {
    server = std::make_unique<ScriptedServer>(std::move(conversations));
}

void WireTest::Converse(std::vector<Conversation> conversations) {
    Serve(std::move(conversations));
    Connect();
}

void WireTest::ConverseOnce(const std::vector<std::string>& replies) {
    Converse({Replies(replies)});
}

void WireTest::Connect() { client.connect("127.0.0.1", server->port(), "root", "secret"); }

std::string WireTest::ConnectOutcome() {
    return FailureOf([this] { Connect(); });
}

std::string WireTest::Enumerate() {
    return OutcomeOf([this] { return client.enumerateInstances("root/cimv2", "X"); });
}

std::string WireTest::OutcomeOfAnswer(const std::string& answer) {
    client.disconnect();
    ConverseOnce({answer});
    return Enumerate();
}

std::string WireTest::OutcomeOfLastWords(const std::string& answer) {
    client.disconnect();
    Converse({Replies({answer}) + Conversation{Close()}});
    return Enumerate();
}

std::vector<std::string> WireTest::Authorizations() const {
    std::vector<std::string> values;
    for (const RecordedRequest& request : server->requests()) {
        values.push_back(request.Header("Authorization"));
    }
    return values;
}

std::vector<std::size_t> WireTest::ConnectionsUsed() const {
    std::vector<std::size_t> connections;
    for (const RecordedRequest& request : server->requests()) {
        connections.push_back(request.connection);
    }
    return connections;
}

Pegasus::CIMName WireTest::LongName(std::size_t bytes) {
    return Pegasus::CIMName(std::string(bytes, 'x').c_str());
}

}  // namespace wire
