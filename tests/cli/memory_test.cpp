// A host whose inventory is more than there is memory for.
#include "cli/command_test.h"

namespace clitest {
namespace {

using testing::HasSubstr;

class LittleMemory : public CommandTest {};

TEST_F(LittleMemory, IsReportedInOneLineAfterWhatWasRead) {
    Serve();
    simhost::Fault much = simhost::Faults::HugeReply(40UL * 1024 * 1024);
    much.only_class = "VMware_ComponentSoftwareIdentity";
    Server().InjectFault(much);
    for (const char* format : {"text", "json"}) {
        std::vector<std::string> arguments{"-c", "ulimit -v 60000; exec \"$0\" \"$@\"",
                                           KALVEX_COMMAND};
        const std::vector<std::string> to_host = ToHost("inventory", {"--format", format});
        arguments.insert(arguments.end(), to_host.begin(), to_host.end());
        const Finished finished = RunProcess("/bin/sh", {arguments});
        EXPECT_EQ(finished.status, 1);
        EXPECT_EQ(finished.err,
                  "kalvex: there is too little memory to read on; free some, or name fewer "
                  "sections\n");
        EXPECT_THAT(finished.out, HasSubstr("14320388"));
        EXPECT_EQ(Json::accept(finished.out), std::string(format) == "json");
    }
}

}  // namespace
}  // namespace clitest
