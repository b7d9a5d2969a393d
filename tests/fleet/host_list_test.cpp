// Lists of hosts, as people write them.
#include "fleet/host_list.h"

#include <gmock/gmock.h>

#include <sstream>

namespace {

using namespace fleet;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

HostList Read(const std::string& text, const HostDefaults& defaults = {}) {
    std::istringstream in(text);
    return ReadHostList(in, defaults);
}

std::vector<std::string> NamesOf(const std::vector<HostEntry>& hosts) {
    std::vector<std::string> names;
    for (const HostEntry& host : hosts) {
        names.push_back(host.Name());
    }
    return names;
}

/// "LINE: TEXT" of the only problem.
std::string ProblemOf(const std::string& text) {
    const HostList list = Read(text);
    return list.problems.size() != 1
               ? "no, or more than one"
               : std::to_string(list.problems[0].line) + ": " + list.problems[0].text;
}

TEST(HostList, IsNamesOneALine) {
    const HostList list =
        Read("esx01\n\n# a comment\n  esx02:443\n[::1]:15989\r\n2001:db8::7\n[::2]\n");
    EXPECT_THAT(list.problems, IsEmpty());
    EXPECT_THAT(NamesOf(list.hosts), ElementsAre("esx01:5989", "esx02:443", "[::1]:15989",
                                                 "[2001:db8::7]:5989", "[::2]:5989"));
    EXPECT_EQ(list.hosts[1].line, 4U);
}

TEST(HostList, IsCsvWithAHeaderLine) {
    const HostList list = Read(
        "# hosts of the second row\n"
        "port,host,user,transport,password_file,ca_file,fingerprint\n"
        ",esx01,root,,,,\n"
        "8080, esx02 ,,http,\"/etc/a \"\"b\"\", c\",/ca.pem,AB:CD\n"
        "1234,esx03\n");
    ASSERT_THAT(list.problems, IsEmpty());
    ASSERT_THAT(NamesOf(list.hosts), ElementsAre("esx01:5989", "esx02:8080", "esx03:1234"));
    EXPECT_EQ(list.hosts[0].user, "root");
    EXPECT_FALSE(list.hosts[1].has_tls);
    EXPECT_EQ(list.hosts[1].password_file, "/etc/a \"b\", c");
    EXPECT_EQ(list.hosts[1].ca_file, "/ca.pem");
    EXPECT_THAT(list.hosts[1].fingerprints, ElementsAre("AB:CD"));
}

TEST(HostList, TakesTheDefaultsWhereALineSaysNothing) {
    const HostList list =
        Read("host,user\nesx01,\nesx02:7,admin\n", {99, false, "root", "/pw", "/ca", {"AB"}});
    ASSERT_THAT(NamesOf(list.hosts), ElementsAre("esx01:99", "esx02:7"));
    EXPECT_EQ(list.hosts[0].user, "root");
    EXPECT_EQ(list.hosts[0].password_file, "/pw");
    EXPECT_EQ(list.hosts[0].ca_file, "/ca");
    EXPECT_THAT(list.hosts[0].fingerprints, ElementsAre("AB"));
    EXPECT_FALSE(list.hosts[0].has_tls);
    EXPECT_EQ(list.hosts[1].user, "admin");
    EXPECT_EQ(Read("esx01\n", {0, false, "", "", "", {}}).hosts[0].port, 5988);
}

TEST(HostList, MayBeginWithAByteOrderMark) {
    EXPECT_THAT(NamesOf(Read("\xEF\xBB\xBFhost\r\nesx01\r\n").hosts), ElementsAre("esx01:5989"));
}

TEST(HostList, ReportsWhatIsWrongWithItsLine) {
    EXPECT_THAT(ProblemOf("esx01\nesx01\n"), HasSubstr("2: esx01:5989 stands in line 1 already"));
    EXPECT_THAT(ProblemOf("esx01\nESX01:5989\n"), HasSubstr("2: ESX01:5989 stands in line 1"));
    EXPECT_THAT(ProblemOf("esx01:0\n"), HasSubstr("1: \"0\" is not a port"));
    EXPECT_THAT(ProblemOf("esx01:65536\n"), HasSubstr("is not a port"));
    EXPECT_THAT(ProblemOf("[::1\n"), HasSubstr("lacks its closing bracket"));
    EXPECT_THAT(ProblemOf("[::1]x\n"), HasSubstr("more after its closing bracket"));
    EXPECT_THAT(ProblemOf("https://esx01/\n"), HasSubstr("is not a"));
    EXPECT_THAT(ProblemOf("esx01,443\n"), HasSubstr("needs a header line"));
    EXPECT_THAT(ProblemOf("host,port\n,443\n"), HasSubstr("2: the host is missing"));
    EXPECT_THAT(ProblemOf("host,port\na,1,x\n"), HasSubstr("3 cells, but 2 columns"));
    EXPECT_THAT(ProblemOf("host,transport\na,ssh\n"), HasSubstr("is not a transport"));
    EXPECT_THAT(ProblemOf("host,colour\n"), HasSubstr("\"colour\" is not a column; choose among"));
    EXPECT_THAT(ProblemOf("host\n\"a\n"), HasSubstr("quoted cell"));
}

TEST(HostList, KeepsTheGoodLinesBesideBadOnes) {
    const HostList list = Read("a\nb:x\nc\nd:y\n");
    EXPECT_THAT(list.problems, SizeIs(2));
    EXPECT_THAT(NamesOf(list.hosts), ElementsAre("a:5989", "c:5989"));
}

TEST(HostList, IsDividedIntoShardsThatHaveEachHostOnce) {
    const auto hosts = Read("a\nb\nc\nd\ne\n").hosts;
    EXPECT_THAT(NamesOf(ShardOf(hosts, 1, 3)), ElementsAre("a:5989", "d:5989"));
    EXPECT_THAT(NamesOf(ShardOf(hosts, 2, 3)), ElementsAre("b:5989", "e:5989"));
    EXPECT_THAT(NamesOf(ShardOf(hosts, 3, 3)), ElementsAre("c:5989"));
    EXPECT_THAT(ShardOf(hosts, 7, 8), IsEmpty());
}

}  // namespace
