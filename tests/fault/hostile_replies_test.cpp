// Replies that are made to hurt: each has a stated outcome and costs a bounded amount of memory.
#include <cstdio>

#include "bench/server_process.h"
#include "cimclient/wire/wire_test.h"
#include "client/client_settings.h"
#include "fault/memory_use.h"

namespace {

using namespace support;

constexpr std::size_t kMebi = 1024 * 1024;

std::string Repeated(const std::string& text, std::size_t count) {
    std::string all;
    all.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

std::string Instance(const std::string& content) { return NamedInstance("1", content); }

std::string Text(const std::string& value) {
    return "<PROPERTY NAME=\"p\" TYPE=\"string\"><VALUE>" + value + "</VALUE></PROPERTY>";
}

std::string ManyProperties() {
    std::string all;
    for (int i = 0; i < 1000000; ++i) {
        all += "<PROPERTY NAME=\"p" + std::to_string(i) + "\" TYPE=\"uint8\"/>";
    }
    return all;
}

std::string EmbeddedInstance(const std::string& text) {
    return "<INSTANCE CLASSNAME=\"K\"><PROPERTY NAME=\"p\" TYPE=\"string\" "
           "EmbeddedObject=\"instance\"><VALUE>" +
           text + "</VALUE></PROPERTY></INSTANCE>";
}

std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '<') {
            escaped += "&lt;";
        } else if (c == '&') {
            escaped += "&amp;";
        } else {
            escaped += c;
        }
    }
    return escaped;
}

/// A property whose value holds a text 16 levels deep.
std::string Within16Levels(const std::string& innermost) {
    std::string text = "<INSTANCE CLASSNAME=\"K\">" + Text(innermost) + "</INSTANCE>";
    for (int level = 1; level < 16; ++level) {
        text = EmbeddedInstance(Escaped(text));
    }
    return "<PROPERTY NAME=\"p\" TYPE=\"string\" EmbeddedObject=\"instance\"><VALUE>" +
           Escaped(text) + "</VALUE></PROPERTY>";
}

std::string ArrayOf(const std::string& type, const std::string& element, std::size_t count) {
    return "<PROPERTY.ARRAY NAME=\"p\" TYPE=\"" + type + "\"><VALUE.ARRAY>" +
           Repeated(element, count) + "</VALUE.ARRAY></PROPERTY.ARRAY>";
}

std::string Utf16(const std::string& text) {
    std::string wide = "\xFF\xFE";
    for (const char c : text) {
        wide += c;
        wide += '\0';
    }
    return wide;
}

struct Attack {
    const char* name;
    std::function<Conversation()> conversation;
    const char* outcome;
    std::size_t at_most;  ///< bytes of memory
};

/// An answer whose content is this.
Attack Content(const char* name, std::function<std::string()> content, const char* outcome,
               std::size_t at_most) {
    return {name, [=] { return Replies({Answer(BodyReturning(content()))}); }, outcome, at_most};
}

/// An answer whose body is this.
Attack Whole(const char* name, std::function<std::string()> body, const char* outcome,
             std::size_t at_most) {
    return {name, [=] { return Replies({Answer(body())}); }, outcome, at_most};
}

/// A head with this line, and something after it.
Attack Head(const char* name, const std::string& line, Step rest, const char* outcome,
            std::size_t at_most) {
    return {name,
            [=] {
                return Conversation{AwaitRequest(), Send(AnswerHead({line})), rest};
            },
            outcome, at_most};
}

constexpr const char* kTooLarge =
    "CIMClientMalformedHTTPException [The reply is larger than 67108864 bytes.]";
constexpr const char* kTooMuchMemory =
    "CIMClientXmlException [The objects of the reply would take too much memory.]";
/// What a reply may take: four times its size, and 32 MiB.
constexpr std::size_t AtMostFor(std::size_t mebibytes) { return (4 * mebibytes + 32) * kMebi; }
/// Of that, what is taken beside the budget for objects and texts.
constexpr std::size_t kMostUncounted = 12 * kMebi;
constexpr const char* kBadLength =
    "CIMClientHTTPErrorException 400 [HTTP Error (400 Bad Request): Detail = \"Invalid "
    "Content-Length header detected\".]";

const Attack kAttacks[] = {
    Head("EndlessChunks", "Transfer-Encoding: chunked",
         Flood(Repeated("400\r\n" + std::string(1024, ' ') + "\r\n", 64)), kTooLarge, 8 * kMebi),
    Head("EndlessBody", "X: y", Flood(std::string(65536, '<')), kTooLarge, 8 * kMebi),
    Head("LengthOf2To63", "Content-Length: 9223372036854775808", Flood("x"), kBadLength, kMebi),
    Head("NegativeLength", "Content-Length: -1", Flood("x"), kBadLength, kMebi),
    Head("TwoLengths", "Content-Length: 5\r\nContent-Length: 6", Flood("x"), kBadLength, kMebi),
    Head("TenGigabytesAnnounced", "Content-Length: 10000000000", Drip("<"), kTooLarge, kMebi),
    Head("HugeChunk", "Transfer-Encoding: chunked", Send("FFFFFFFFFFFFFFFFF\r\n"), kTooLarge,
         kMebi),
    {"EndlessHead",
     [] {
         return Conversation{AwaitRequest(), Send("HTTP/1.1 200 OK\r\n"),
                             Flood(Repeated("X: y\r\n", 1000))};
     },
     "CIMClientMalformedHTTPException [The reply's head is too large.]", 2 * kMebi},
    {"HeadAndTrailersThatAreNotUtf8",
     [] {
         const std::string line = "X: " + std::string(1'000'000, '\xFF');
         return Replies({AnswerHead({"Transfer-Encoding: chunked", line}) +
                         Chunked(BodyReturning(Instance("")), 1000, {line})});
     },
     "1 objects", kMostUncounted},
    Content(
        "DeepNesting", [] { return Instance(Repeated("<A>", 100000)); },
        "CIMClientXmlException [Elements are nested too deep: on line 6]", 4 * kMebi),
    Whole(
        "EntityBomb",
        [] {
            return std::string(
                "<?xml version=\"1.0\"?><!DOCTYPE x [<!ENTITY a \"aaaaaaaaaa\">"
                "<!ENTITY b \"&a;&a;&a;&a;\">]><CIM>&b;</CIM>");
        },
        "CIMClientXmlException [Validation error: on line 1: Expected open of CIM element]", kMebi),
    Content(
        "UndeclaredEntity", [] { return Instance(Text("&bomb;")); },
        "CIMClientXmlException [Malformed reference: on line 6]", kMebi),
    Content(
        "ExternalEntity",
        [] { return "<!DOCTYPE x SYSTEM \"file:///etc/passwd\">" + Instance(""); },
        "CIMClientXmlException [Validation error: on line 6: Expected open of CIM element]", kMebi),
    Content(
        "NulBytes", [] { return Instance(Text(std::string(3, '\0'))); }, "1 objects", kMebi),
    Whole(
        "Utf16", [] { return Utf16(BodyReturning(Instance(""))); },
        "CIMClientXmlException [Validation error: on line 1: Expected <?xml ... ?> style "
        "declaration]",
        kMebi),
    Content(
        "AMillionProperties", [] { return Instance(ManyProperties()); }, "1 objects",
        AtMostFor(33)),
    Content(
        "AMillionQuotesWithin16Levels",
        [] { return Instance(Within16Levels(std::string(1000000, '"'))); }, kTooMuchMemory,
        AtMostFor(1)),
    Content(
        "NineteenMegabytesOfQuotesWithin16Levels",
        [] { return Instance(Within16Levels(std::string(19000000, '"'))); }, kTooMuchMemory,
        AtMostFor(18)),
    Content(
        "QuotesWithin16LevelsOfManyInstances",
        [] { return Repeated(Instance(Within16Levels(std::string(1000, '"'))), 1000); },
        kTooMuchMemory, AtMostFor(5)),
    Content(
        "ALongTextWithin16Levels",
        [] { return Instance(Within16Levels(std::string(2 * kMebi, 'x'))); }, kTooMuchMemory,
        AtMostFor(2)),
    Content(
        "ValueOf20MegabytesThatIsNotUtf8",
        [] { return Instance(Text(std::string(20 * kMebi, '\xFF'))); }, kTooMuchMemory,
        AtMostFor(20)),
    Content(
        "AHundredThousandSmallestInstances",
        [] {
            return Repeated(
                "<VALUE.NAMEDINSTANCE><INSTANCENAME CLASSNAME=\"K\"/><INSTANCE "
                "CLASSNAME=\"K\"/></VALUE.NAMEDINSTANCE>",
                100000);
        },
        "100000 objects", 12 * kMebi),
    Content(
        "SmallestInstancesUpToTheLimit",
        [] {
            return Repeated(
                "<VALUE.NAMEDINSTANCE><INSTANCENAME CLASSNAME=\"K\"/><INSTANCE "
                "CLASSNAME=\"K\"/></VALUE.NAMEDINSTANCE>",
                600000);
        },
        "600000 objects", AtMostFor(56)),
    Content(
        "ANullInEachOfAMillionElements",
        [] { return Instance(ArrayOf("string", "<VALUE.NULL/>", 1000000)); }, "1 objects",
        AtMostFor(12)),
    Content(
        "AMillionTextsInArrays",
        [] {
            return Repeated(Instance(ArrayOf("string", "<VALUE>a &amp; b</VALUE>", 100000)), 10);
        },
        "10 objects", AtMostFor(21)),
    Content(
        "KeysOfTenKilobytes",
        [] { return Repeated(NamedInstance(std::string(10000, 'k'), Text("x")), 1000); },
        "1000 objects", AtMostFor(9)),
    Content(
        "AMillionEmptyElements", [] { return Instance(Repeated("<A/>", 1000000)); }, "1 objects",
        16 * kMebi),
    Content(
        "ValueOf60Megabytes", [] { return Instance(Text(std::string(60 * kMebi, 'x'))); },
        "1 objects", 160 * kMebi),
    Content(
        "DuplicateNames", [] { return Instance(Repeated(Text("x"), 100000)); }, "1 objects",
        64 * kMebi),
    Content(
        "NumberOfTenThousandDigits",
        [] {
            return Instance("<PROPERTY NAME=\"p\" TYPE=\"uint64\"><VALUE>" +
                            std::string(10000, '9') + "</VALUE></PROPERTY>");
        },
        "1 objects", kMebi),
    Content(
        "AMillionAttributes", [] { return "<A" + Repeated(" b=\"\"", 1000000) + "/>"; },
        "CIMClientXmlException [Too many attributes: on line 6]", 8 * kMebi),
    Content(
        "TwoMillionArrayElements", [] { return Instance(ArrayOf("string", "<VALUE/>", 2000000)); },
        "CIMClientXmlException [Validation error: on line 6: There are too many elements in "
        "VALUE.ARRAY]",
        64 * kMebi),
    Content(
        "ReferencesWithinReferences",
        [] {
            return "<VALUE.NAMEDINSTANCE>" +
                   Repeated("<INSTANCENAME CLASSNAME=\"X\"><VALUE.REFERENCE>", 50);
        },
        "CIMClientXmlException [Validation error: on line 6: References are nested too deep]",
        kMebi),
    Content(
        "AReferenceOfAMillionQuotes",
        [] {
            return "<VALUE.NAMEDINSTANCE><INSTANCENAME CLASSNAME=\"X\"><VALUE.REFERENCE>"
                   "<INSTANCENAME CLASSNAME=\"Y\"><KEYVALUE>" +
                   std::string(1000000, '"') + "</KEYVALUE></INSTANCENAME></VALUE.REFERENCE>";
        },
        "CIMClientXmlException [Validation error: on line 6: The reference in a key is too long]",
        8 * kMebi),
};

#ifndef __has_feature
#define __has_feature(feature) 0
#endif

/// Sanitizers keep memory of their own beside each byte. GCC defines names for them, Clang
/// features.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || \
    __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
constexpr std::size_t kOverhead = 20;
#else
constexpr std::size_t kOverhead = 1;
#endif

/// No reply here stalls, but large ones take their time under a sanitizer.
constexpr unsigned kPatience = 110'000;

/// In a process of its own, whose memory does not count.
class Script : public bench::Service {
public:
    explicit Script(std::vector<Conversation> conversations) : server_(std::move(conversations)) {}
    std::uint16_t port() const override { return server_.port(); }
    bench::Counts counts() const override { return {}; }

private:
    ScriptedServer server_;
};

class Hostile : public wire::WireTest, public ::testing::WithParamInterface<Attack> {
protected:
    /// The replies are made in the other process, too.
    const bench::ServerProcess host{[] {
        return std::make_unique<Script>(
            std::vector<Conversation>{GetParam().conversation(), Replies({AnswerOf(1)})});
    }};

    void Connect() { client.connect("127.0.0.1", host.port(), "root", "secret"); }
};

TEST_P(Hostile, HasItsOutcomeInBoundedMemory) {
    const Attack& attack = GetParam();
    Connect();
    client.setTimeout(kPatience);
    const fault::PeakMemory memory;
    EXPECT_EQ(Enumerate(), attack.outcome);
    const std::size_t growth = memory.Growth();
    std::printf("%-28s %6.1f MiB\n", attack.name,
                static_cast<double>(growth) / static_cast<double>(kMebi));
    EXPECT_LE(growth, attack.at_most * kOverhead);
    client.disconnect();
    Connect();
    EXPECT_EQ(Enumerate(), "1 objects");
}

INSTANTIATE_TEST_SUITE_P(Reply, Hostile, ::testing::ValuesIn(kAttacks),
                         [](const auto& attack) { return attack.param.name; });

class ReplyLimit : public wire::WireTest {
protected:
    std::string OutcomeOfMebibytes(std::size_t size) {
        Serve({Replies({Answer(BodyReturning(Instance(Text("x")) + "<!--" +
                                             std::string(size * kMebi, ' ') + "-->"))})});
        Connect();
        client.setTimeout(kPatience);
        return Enumerate();
    }
};

TEST_F(ReplyLimit, Is64MiB) { EXPECT_EQ(OutcomeOfMebibytes(64), kTooLarge); }

TEST_F(ReplyLimit, MayBeRaised) {
    cimclient::ClientSettings settings;
    settings.max_reply_bytes = 65 * kMebi;
    cimclient::Configure(client, settings);
    EXPECT_EQ(OutcomeOfMebibytes(64), "1 objects");
}

}  // namespace
