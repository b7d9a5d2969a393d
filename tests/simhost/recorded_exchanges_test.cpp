// Recorded requests, answered as the recorded server did.
#include <filesystem>
#include <fstream>
#include <iterator>

#include "simhost/host_test.h"

namespace simhost_test {

namespace {

constexpr const char* kExchanges = KALVEX_TEST_DATA "/exchanges";
constexpr const char* kRecordedHost = KALVEX_TEST_DATA "/../simhost/data/recorded_host.json";

std::string Content(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

class RecordedExchanges : public HostTest {
protected:
    RecordedExchanges() { Serve(simhost::HostDescription::FromFile(kRecordedHost)); }
};

TEST_F(RecordedExchanges, AreAnsweredByteForByte) {
    RawClient client = Connect();
    int exchanges = 0;
    for (const auto& entry : std::filesystem::directory_iterator(kExchanges)) {
        if (entry.path().extension() == ".request") {
            SCOPED_TRACE(entry.path().filename());
            auto response = entry.path();
            EXPECT_EQ(client.Ask(Content(entry.path())).raw,
                      Content(response.replace_extension(".response")));
            ++exchanges;
        }
    }
    EXPECT_EQ(exchanges, 23);
    EXPECT_EQ(Server().counters().connections, 1U);
}

}  // namespace

}  // namespace simhost_test
