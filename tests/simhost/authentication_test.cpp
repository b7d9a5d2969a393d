#include "simhost/base64.h"
#include "simhost/host_test.h"

namespace simhost_test {

namespace {

class Authentication : public HostTest {
protected:
    Authentication() {
        options.user = "root";
        options.password = "pässwörd: €";
    }
    static std::string CardsAs(const std::string& authorization) {
        return EnumerateCards({"Authorization: " + authorization + "\r\n", ""});
    }

    simhost::ServerOptions options = Http();
};

TEST_F(Authentication, IsAskedForOnTheSameConnection) {
    Serve(options);
    RawClient client = Connect();
    const Reply challenge = client.Ask(EnumerateCards());
    EXPECT_EQ(challenge.status, 401);
    EXPECT_EQ(challenge.Header("WWW-Authenticate"), "Basic realm=\"cimom\"");
    EXPECT_EQ(challenge.Header("Content-Length"), "0000000000");
    const std::string credentials = simhost::Base64("root:pässwörd: €");
    EXPECT_EQ(client.Ask(CardsAs("Basic " + credentials)).status, 200);
    const auto counters = Server().counters();
    EXPECT_EQ(counters.connections, 1U);
    EXPECT_EQ(counters.requests, 2U);
    EXPECT_EQ(counters.challenges, 1U);
    EXPECT_FALSE(Server().requests()[0].authorised);
    EXPECT_TRUE(Server().requests()[1].authorised);
}

TEST_F(Authentication, RefusesOtherCredentialsAndSchemes) {
    Serve(options);
    const std::string right = simhost::Base64("root:pässwörd: €");
    for (const std::string& given :
         {"Basic " + simhost::Base64("root:other"), "Basic " + right + "x", "Digest " + right,
          right, std::string("Basic"), std::string("Basic ")}) {
        EXPECT_EQ(Ask(CardsAs(given)).status, 401) << given;
    }
    EXPECT_EQ(Ask(CardsAs("basic  " + right)).status, 200);
}

TEST_F(Authentication, ChallengesAsConfigured) {
    options.challenge = "Basic \"host:5989\"";
    Serve(options);
    EXPECT_EQ(Ask(EnumerateCards()).Header("WWW-Authenticate"), "Basic \"host:5989\"");
    options.challenge = "";
    Serve(options);
    EXPECT_FALSE(Ask(EnumerateCards()).HasHeader("WWW-Authenticate"));
}

TEST_F(Authentication, IsNotNeededWithoutAUser) {
    EXPECT_EQ(Ask(EnumerateCards()).status, 200);
    EXPECT_EQ(Server().counters().challenges, 0U);
}

TEST_F(Authentication, ComesBeforeFaults) {
    Serve(options);
    simhost::Fault once = simhost::Faults::HttpStatus(503, "Service Unavailable");
    once.times = 1;
    Server().InjectFault(once);
    const std::string credentials = "Basic " + simhost::Base64("root:pässwörd: €");
    EXPECT_EQ(Ask(EnumerateCards()).status, 401);
    EXPECT_EQ(Ask(CardsAs(credentials)).status, 503);
    EXPECT_EQ(Ask(CardsAs(credentials)).status, 200);
}

}  // namespace

}  // namespace simhost_test
