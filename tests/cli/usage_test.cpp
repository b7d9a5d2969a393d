// What the command says about itself, and about wrong usage.
#include "cli/command_test.h"

namespace clitest {
namespace {

using testing::HasSubstr;
using testing::MatchesRegex;

struct Mistake {
    std::string name;
    std::vector<std::string> arguments;
    std::string complaint;
};

void PrintTo(const Mistake& mistake, std::ostream* out) { *out << mistake.name; }

class Usage : public CommandTest {};
class UsageMistake : public CommandTest, public testing::WithParamInterface<Mistake> {};

TEST_P(UsageMistake, IsAnsweredWithWhatToWriteInstead) {
    EXPECT_THAT(Run(GetParam().arguments), Complains(2, GetParam().complaint));
}

constexpr const char* kSectionNames =
    "among system, os, packages, events, privileges, ports, ipv4, ipv6, pci";

const std::string kFingerprint(64, 'a');
const std::string kOddFingerprint = ":" + kFingerprint;

const Mistake kMistakes[] = {
    {"NoCommand", {}, "no command; choose among inventory, "},
    {"UnknownCommand",
     {"inventry"},
     "unknown command \"inventry\" (did you mean inventory?); choose among inventory, "},
    {"OptionWithoutCommand", {"--host", "x"}, "unknown command \"--host\"; choose among"},
    {"UnknownOption",
     {"inventory", "--bogus"},
     "unknown option --bogus; see kalvex inventory --help"},
    {"MistypedOption",
     {"inventory", "--hots", "x"},
     "unknown option --hots (did you mean --host?)"},
    {"UnknownOptions", {"supported", "--zzz", "--yyyyy"}, "unknown options --zzz, --yyyyy; see"},
    {"OptionBeforeCommand", {"--bogus", "inventory"}, "unknown option --bogus"},
    {"UnexpectedArgument", {"supported", "x"}, "unexpected argument \"x\"; see"},
    {"UnexpectedArguments",
     {"supported", "x", "y", "z"},
     "unexpected arguments \"x\", \"y\", \"z\"; see"},
    {"MistypedSection", {"inventory", "packges"}, "\"packges\" (did you mean packages?)"},
    {"Since", {"inventory", "--simulated", "--since", "yesterday"}, "\"yesterday\" is no date"},
    {"LastZero", {"inventory", "--simulated", "--last", "0"}, "--last: "},
    {"NoHost", {"inventory"}, "name it with --host HOST, or use --simulated"},
    {"NoHostToSupport", {"supported"}, "name it with --host HOST, or use --simulated"},
    {"UnknownSection", {"inventory", "--host", "x", "disks"}, kSectionNames},
    {"UnknownSectionNamed", {"inventory", "--host", "x", "disks"}, "\"disks\""},
    {"SectionTwice", {"inventory", "os", "pci", "os", "--simulated"}, "\"os\" is given twice"},
    {"PortTooHigh", {"inventory", "--host", "x", "--port", "65536"}, "--port: "},
    {"PortZero", {"inventory", "--host", "x", "--port", "0"}, "--port: "},
    {"PortNoNumber", {"inventory", "--host", "x", "--port", "https"}, "--port: "},
    {"Transport", {"inventory", "--host", "x", "--transport", "ftp"}, "{https,http}"},
    {"Format", {"inventory", "--simulated", "--format", "xml"}, "{text,json,csv}"},
    {"LogLevel", {"inventory", "--simulated", "--log-level", "5"}, "Value 5 not in range"},
    {"ConnectTimeout",
     {"supported", "--host", "x", "--connect-timeout", "-1"},
     "--connect-timeout"},
    {"TimeoutZero", {"inventory", "--host", "x", "--timeout", "0"}, "0 is not a number of seconds"},
    {"TimeoutNotANumber",
     {"inventory", "--host", "x", "--timeout", "nan"},
     "--timeout: nan is not"},
    {"RequestTimeoutTooLong",
     {"inventory", "--host", "x", "--request-timeout", "1e9"},
     "from 0.001 to 604800"},
    {"CaFileWithoutTls",
     {"inventory", "--host", "x", "--transport", "http", "--ca-file", "y"},
     "none of with --transport http"},
    {"FingerprintWithoutTls",
     {"inventory", "--host", "x", "--transport", "http", "--fingerprint", kFingerprint},
     "none of with --transport http"},
    {"FingerprintTooShort",
     {"inventory", "--host", "x", "--fingerprint", "AB:CD"},
     "32 bytes in hexadecimal"},
    {"FingerprintWithOddColons",
     {"inventory", "--host", "127.0.0.1", "--port", "1", "--fingerprint", kOddFingerprint},
     "not 32 bytes in hexadecimal"},
    {"CaFileEmpty",
     {"inventory", "--host", "127.0.0.1", "--port", "1", "--ca-file", ""},
     "--ca-file: the name of the file is empty"},
    {"CaFileMissing",
     {"inventory", "--host", "127.0.0.1", "--port", "1", "--ca-file", "/no/such/file"},
     "\"/no/such/file\" cannot be used"},
    {"CaFileMissingToSupport",
     {"supported", "--host", "127.0.0.1", "--port", "1", "--ca-file", "/no/such/file"},
     "\"/no/such/file\" cannot be used"},
    {"HostIsUrl", {"inventory", "--host", "https://x"}, "a name or an address alone"},
    {"HostWithPort", {"inventory", "--host", "x:5989"}, "give the port with --port"},
    {"HostAndSimulated", {"inventory", "--host", "x", "--simulated"}, "leave out --simulated"},
    {"UserAndSimulated", {"inventory", "--user", "x", "--simulated"}, "leave out --simulated"},
    {"NoValue", {"inventory", "--host"}, "--host needs a value"},
    {"OptionTwice", {"inventory", "--host", "x", "--host", "y"}, "--host is given more than once"},
    {"OptionWithALineBreak", {"inventory", "--x\nkalvex: forged"}, "--x\\nkalvex: forged"},
    {"SectionWithALineBreak", {"inventory", "x\n\x1B[2J"}, "\"x\\n\\x1B[2J\""},
    {"LogFileWithALineBreak",
     {"inventory", "--simulated", "--log-file", "/no/x\ny"},
     "/no/x\\ny: No such file"},
    {"SimulatePort", {"simulate", "--port", "70000"}, "--port: "},
};

INSTANTIATE_TEST_SUITE_P(, UsageMistake, testing::ValuesIn(kMistakes),
                         [](const auto& test) { return test.param.name; });

TEST_F(Usage, PasswordAsAnArgumentIsRefusedAndNotRepeated) {
    for (const char* argument : {"--password", "--password=geheim"}) {
        const Finished finished =
            Run({"inventory", "--host", "x", "--user", "root", argument, "geheim"});
        EXPECT_THAT(finished, Complains(2, "--password-file"));
        EXPECT_EQ(finished.err.find("geheim"), std::string::npos);
    }
}

TEST_F(Usage, EveryHelpHasAnExample) {
    for (const std::string command :
         {"inventory", "supported", "fingerprint", "schema", "simulate", "help"}) {
        const Finished help = Run({command, "--help"});
        EXPECT_EQ(help.status, 0);
        EXPECT_EQ(help.err, "");
        EXPECT_THAT(help.out, HasSubstr("Example"));
        EXPECT_THAT(help.out, HasSubstr("\n  kalvex " + command + " "));
    }
    EXPECT_THAT(Run({"--help"}).out, HasSubstr("\n  kalvex inventory --simulated"));
}

TEST_F(Usage, HelpOfInventoryTellsOptionsSectionsAndExitStatus) {
    const std::string help = Run({"inventory", "--help"}).out;
    for (const char* part : {"--host",
                             "--port",
                             "--transport",
                             "--user",
                             "--password-file",
                             "KALVEX_PASSWORD",
                             "--simulated",
                             "--format",
                             "--output",
                             "--output-dir",
                             "--since",
                             "--last",
                             "KALVEX_HOST",
                             "KALVEX_USER",
                             "--log-level",
                             "--log-file",
                             "--connect-timeout",
                             "--request-timeout",
                             "--timeout",
                             "--ca-file",
                             "--fingerprint",
                             "5989",
                             "system, os, packages, events, privileges, ports, ipv4, ipv6, pci",
                             "Exit status"}) {
        EXPECT_THAT(help, HasSubstr(part));
    }
}

TEST_F(Usage, HelpNeverOffersAPasswordArgument) {
    EXPECT_EQ(Run({"inventory", "--help"}).out.find("--password "), std::string::npos);
}

TEST_F(Usage, VersionIsPrinted) {
    const Finished version = Run({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_THAT(version.out, MatchesRegex("kalvex [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

}  // namespace
}  // namespace clitest
