// Hosts that say too much.
#include "cimclient/wire/wire_test.h"

namespace {

using namespace support;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

constexpr const char* kEncoded = "cm9vdDpzZWNyZXQ=";  // root:secret

class HostWords : public wire::WireTest {
protected:
    std::string MessageOfError(const std::string& description) {
        return OutcomeOfAnswer(
            Answer(Body("<ERROR CODE=\"1\" DESCRIPTION=\"" + description + "\"/>")));
    }
};

std::string Repeated(const std::string& text, std::size_t count) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

TEST_F(HostWords, AreKeptWholeUpToFourKibibytes) {
    const std::string longest(4096, 'x');
    EXPECT_EQ(MessageOfError(longest), "CIMException 1 [" + longest + "]");
    EXPECT_EQ(MessageOfError(longest + "x"),
              "CIMException 1 [" + std::string(4093, 'x') + "\u2026]");
}

TEST_F(HostWords, AreCutBetweenCharacters) {
    const std::string outcome = MessageOfError(Repeated("\u20AC", 100'000));
    EXPECT_EQ(outcome, "CIMException 1 [" + Repeated("\u20AC", 1364) + "\u2026]");
}

TEST_F(HostWords, AreCutInEveryKindOfFailure) {
    const std::string flood(500'000, 'y');
    for (const std::string& answer :
         {Reply("500 " + flood, {"Content-Length: 0"}, ""),
          Answer(Body(""), {"CIMStatusCode: 1", "CIMStatusCodeDescription: " + flood}),
          Reply("200 OK", {"CIMOperation: MethodResponse", "Content-Type: " + flood}, ""),
          Answer("<?xml version=\"1.0\"?>\n<" + flood + "/>"),
          Answer("<?xml version=\"1.0\"?>\n<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\">"
                 "<MESSAGE ID=\"" +
                 flood + "\" PROTOCOLVERSION=\"1.0\"></MESSAGE></CIM>")}) {
        const std::string outcome = OutcomeOfAnswer(answer);
        EXPECT_THAT(outcome, HasSubstr("Exception"));
        EXPECT_LE(outcome.size(), 4096U + 100);
    }
}

TEST_F(HostWords, DoNotRepeatTheCredentials) {
    EXPECT_EQ(MessageOfError(std::string("Authorization: Basic ") + kEncoded + " and secret"),
              "CIMException 1 [Authorization: Basic ********** and **********]");
    EXPECT_EQ(OutcomeOfAnswer(Reply(std::string("403 ") + kEncoded, {"Content-Length: 0"}, "")),
              "CIMClientHTTPErrorException 403 [HTTP Error (403 **********).]");
}

TEST_F(HostWords, KeepTheUsersName) {
    EXPECT_EQ(MessageOfError("root may not"), "CIMException 1 [root may not]");
}

TEST_F(HostWords, DoNotShowHalfOfTheCredentialsAtTheCut) {
    for (std::size_t before = 4096 - 40; before < 4096 + 10; ++before) {
        const std::string outcome = MessageOfError(std::string(before, 'x') + kEncoded + "xxxx");
        EXPECT_THAT(outcome, Not(HasSubstr("cm9v"))) << before;
    }
}

TEST_F(HostWords, KeepWordsThatAShortPasswordStandsIn) {
    Serve({Replies({Answer(Body("<ERROR CODE=\"1\" DESCRIPTION=\"an error\"/>"))})});
    client.disconnect();
    client.connect("127.0.0.1", server->port(), "root", "error");
    EXPECT_EQ(Enumerate(), "CIMException 1 [an error]");
}

TEST_F(HostWords, CountThePasswordsCharactersAndNotItsBytes) {
    Serve({Replies({Answer(Body("<ERROR CODE=\"1\" DESCRIPTION=\"100 \u20AC\u20AC\"/>"))})});
    client.disconnect();
    client.connect("127.0.0.1", server->port(), "root", "\u20AC\u20AC");
    EXPECT_EQ(Enumerate(), "CIMException 1 [100 \u20AC\u20AC]");
}

}  // namespace
