// What spares people a look into the help.
#include "cli/command_test.h"

namespace clitest {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

class Convenience : public CommandTest {
protected:
    static std::vector<std::string> NamesOf(const Json& sections) {
        std::vector<std::string> names;
        for (const auto& [name, section] : sections.items()) {
            names.push_back(name);
        }
        return names;
    }
    std::vector<std::string> ToPort() const {
        return {"inventory", "os",     "--transport",
                "http",      "--port", std::to_string(Server().port())};
    }
};

TEST_F(Convenience, SectionsMayBeOneWord) {
    Serve();
    EXPECT_THAT(NamesOf(Sections({"os,system", "ports"})), ElementsAre("system", "os", "ports"));
    const Finished simulated = Run({"inventory", "--simulated", "os,system", "--format", "json"});
    EXPECT_THAT(NamesOf(Json::parse(simulated.out).at("sections")), ElementsAre("system", "os"));
}

TEST_F(Convenience, AllIsEverySection) {
    Serve();
    EXPECT_EQ(Sections({"all"}), Sections());
}

TEST_F(Convenience, SectionsInOneWordAreCheckedToo) {
    EXPECT_THAT(Run({"inventory", "os,disks", "--simulated"}), Complains(2, "\"disks\""));
    EXPECT_THAT(Run({"inventory", "os,", "--simulated"}), Complains(2, "section \"\""));
    EXPECT_THAT(Run({"inventory", "os,pci", "os", "--simulated"}), Complains(2, "given twice"));
}

TEST_F(Convenience, HelpIsACommandToo) {
    for (const std::string command : {"inventory", "supported", "simulate", "schema", "help"}) {
        const Finished help = Run({"help", command});
        EXPECT_EQ(help.status, 0) << help.err;
        EXPECT_EQ(help.out, Run({command, "--help"}).out);
    }
    EXPECT_EQ(Run({"help"}).out, Run({"--help"}).out);
    EXPECT_THAT(Run({"help", "inventry"}), Complains(2, "(did you mean inventory?)"));
}

TEST_F(Convenience, VersionHasAShortName) {
    EXPECT_EQ(Run({"-V"}).out, Run({"--version"}).out);
    EXPECT_EQ(Run({"-V"}).status, 0);
}

TEST_F(Convenience, AnUnknownOptionsValueIsNotRepeated) {
    const std::string secret = "geheim";
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"--pasword=" + secret},
          {"-p" + secret},
          {"--pasword", secret}}) {
        std::vector<std::string> all{"supported"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        const Finished finished = Run(all);
        EXPECT_THAT(finished, Complains(2, "unknown option -"));
        EXPECT_THAT(finished.err, Not(HasSubstr(secret)));
    }
}

TEST_F(Convenience, HostAndUserMayComeFromTheEnvironment) {
    Serve(WithAccount());
    const std::map<std::string, std::string> account{
        {"KALVEX_HOST", "127.0.0.1"}, {"KALVEX_USER", kUser}, {"KALVEX_PASSWORD", kPassword}};
    const Finished finished = Run({ToPort(), account});
    EXPECT_EQ(finished.status, 0) << finished.err;
    EXPECT_THAT(finished.out, testing::StartsWith("127.0.0.1:"));
}

TEST_F(Convenience, OptionsGoBeforeTheEnvironment) {
    Serve(WithAccount());
    std::vector<std::string> arguments = ToPort();
    arguments.insert(arguments.end(), {"--host", "127.0.0.1", "--user", kUser});
    const Finished finished = Run({arguments,
                                   {{"KALVEX_HOST", "no-such-host.invalid"},
                                    {"KALVEX_USER", "nobody"},
                                    {"KALVEX_PASSWORD", kPassword}}});
    EXPECT_EQ(finished.status, 0) << finished.err;
}

TEST_F(Convenience, TheSimulatedHostIgnoresTheEnvironment) {
    const Finished finished =
        Run({{"inventory", "os", "--simulated"},
             {{"KALVEX_HOST", "no-such-host.invalid"}, {"KALVEX_USER", "x"}}});
    EXPECT_EQ(finished.status, 0) << finished.err;
}

TEST_F(Convenience, EventsMayBeNarrowed) {
    const auto events = [](std::vector<std::string> more) {
        more.insert(more.begin(), {"inventory", "events", "--simulated", "--format", "json"});
        return Json::parse(Run(more).out).at("sections").at("events").at("records");
    };
    EXPECT_THAT(events({"--last", "5"}), SizeIs(5));
    EXPECT_THAT(events({"--since", "9999-01-01"}), IsEmpty());
    EXPECT_THAT(events({"--since", "1971-01-01T00:00:00Z"}), SizeIs(300));
}

TEST_F(Convenience, NarrowingEventsThatAreNotReadIsRefused) {
    EXPECT_THAT(Run({"inventory", "os", "--simulated", "--last", "5"}), Complains(2, "add events"));
    EXPECT_THAT(Run({"inventory", "os", "--simulated", "--since", "2026-01-01"}),
                Complains(2, "add events"));
}

}  // namespace
}  // namespace clitest
