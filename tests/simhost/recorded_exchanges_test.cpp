// Recorded requests, answered as the recorded servers did.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <set>

#include "simhost/host_test.h"
#include "simhost/server_habits.h"

namespace simhost_test {

namespace {

constexpr const char* kRecordedHost = KALVEX_TEST_DATA "/../simhost/data/recorded_host.json";

std::string Content(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

struct Exchange {
    std::string name;
    std::string request;
    std::string response;
};

/// In the order in which they were recorded.
std::vector<Exchange> ExchangesOf(const char* folder) {
    const std::filesystem::path path = std::filesystem::path(KALVEX_TEST_DATA) / folder;
    std::set<std::filesystem::path> requests;
    for (const auto& entry : std::filesystem::directory_iterator(path)) {
        if (entry.path().extension() == ".request") {
            requests.insert(entry.path());
        }
    }
    std::vector<Exchange> exchanges;
    for (std::filesystem::path file : requests) {
        const std::string request = Content(file);
        exchanges.push_back({file.stem(), request, Content(file.replace_extension(".response"))});
    }
    return exchanges;
}

class RecordedExchanges : public HostTest {
protected:
    static simhost::HostDescription RecordedHost() {
        return simhost::HostDescription::FromFile(kRecordedHost);
    }
};

TEST_F(RecordedExchanges, AreAnsweredByteForByte) {
    Serve(RecordedHost());
    RawClient client = Connect();
    const std::vector<Exchange> exchanges = ExchangesOf("exchanges");
    for (const Exchange& exchange : exchanges) {
        EXPECT_EQ(client.Ask(exchange.request).raw, exchange.response) << exchange.name;
    }
    EXPECT_EQ(exchanges.size(), 23U);
    EXPECT_EQ(Server().counters().connections, 1U);
}

/// What a server's answers say of the account and of the connection. The small-footprint server's
/// own answers differ in their XML's form from those that the simulated host gives.
struct Treatment {
    int status = 0;
    std::string challenge;
    std::string connection;
    bool operator==(const Treatment&) const = default;
};

void PrintTo(const Treatment& treatment, std::ostream* out) {
    *out << treatment.status << " [" << treatment.challenge << "] [" << treatment.connection << "]";
}

Treatment TreatmentOf(const std::string& response) {
    Reply reply;
    reply.head = response.substr(0, response.find("\r\n\r\n") + 4);
    reply.status = std::stoi(response.substr(response.find(' ')));
    return {reply.status, reply.Header("WWW-Authenticate"), reply.Header("Connection")};
}

/// The client that sent the request: there was one for each of these texts.
std::string ClientOf(const std::string& request) {
    for (const char* text : {"CIMObject: root%2Fcimv2", "CIMObject: ibm"}) {
        if (request.find(text) != std::string::npos) {
            return text;
        }
    }
    return "CIMObject: root%2Fibmsd";
}

TEST_F(RecordedExchanges, OfTheSmallFootprintServerShowItsHabits) {
    simhost::ServerOptions options = simhost::RealServerHabits();
    options.transport = simhost::Transport::kHttp;
    options.user = "root";
    options.password = "x";
    Serve(RecordedHost(), options);
    std::map<std::string, std::optional<RawClient>> clients;
    const std::vector<Exchange> exchanges = ExchangesOf("exchanges-sfcb");
    for (const Exchange& exchange : exchanges) {
        std::optional<RawClient>& client = clients[ClientOf(exchange.request)];
        if (!client) {
            client.emplace(Server());
        }
        const Treatment given = TreatmentOf(client->Ask(exchange.request).raw);
        EXPECT_EQ(given, TreatmentOf(exchange.response)) << exchange.name;
        if (!given.connection.empty()) {
            client.reset();
        }
    }
    EXPECT_EQ(exchanges.size(), 26U);
    EXPECT_EQ(Server().counters().connections, 5U);
}

}  // namespace

}  // namespace simhost_test
