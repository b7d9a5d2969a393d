// What a caller keeps alive with one object of a large reply.
#include <malloc.h>

#include <set>

#include "bench/server_process.h"
#include "cimclient/wire/wire_test.h"

namespace {

using namespace support;

constexpr std::size_t kKibi = 1024;
constexpr std::size_t kMebi = kKibi * kKibi;

std::size_t HeapInUse() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

std::string Property(const std::string& name, const std::string& value) {
    return "<PROPERTY NAME=\"" + name + "\" TYPE=\"string\"><VALUE>" + value +
           "</VALUE></PROPERTY>";
}

/// Objects that fill more than the arena's largest block. Their texts are too long for a cache.
std::string BlockOfOthers() {
    std::string properties;
    for (int i = 0; i < 50; ++i) {
        properties += Property("Filler", std::string(900, 'x'));
    }
    return NamedInstance("1", properties);
}

/// As src/cimclient/cimxml/text_cache.cpp has it.
std::size_t CacheHash(const std::string& text) {
    const auto letter = [&](std::size_t at) { return static_cast<std::size_t>(text[at]); };
    return text.size() * 7 + letter(0) * 3 + letter(text.size() / 2) * 5 + letter(text.size() - 1);
}

/// Texts that each have a place of their own in a cache of so many, by its hash.
std::vector<std::string> TextsOfAllPlaces(std::size_t places) {
    std::vector<std::string> texts;
    std::set<std::size_t> taken;
    for (unsigned i = 0; texts.size() < places; ++i) {
        std::string text(3 + i % 50, static_cast<char>('a' + i % 26));
        text.back() = static_cast<char>('a' + i / 26 % 26);
        text[text.size() / 2] = static_cast<char>('a' + i / (26 * 26) % 26);
        if (taken.insert(CacheHash(text) % places).second) {
            texts.push_back(text);
        }
    }
    return texts;
}

class KeptObject : public wire::WireTest {
protected:
    /// What stays in use when only the last of the reply's objects is kept.
    std::size_t CostOfTheLastIn(const std::string& content) {
        const std::string answer = Answer(BodyReturning(content));
        class Script : public bench::Service {
        public:
            explicit Script(const std::string& reply) : server_({Replies({reply})}) {}
            std::uint16_t port() const override { return server_.port(); }
            bench::Counts counts() const override { return {}; }

        private:
            ScriptedServer server_;
        };
        const bench::ServerProcess host([&] { return std::make_unique<Script>(answer); });
        client.connect("127.0.0.1", host.port(), "root", "secret");
        const std::size_t before = HeapInUse();
        auto objects = client.enumerateInstances("root/cimv2", "X");
        const std::size_t with_all = HeapInUse();
        const Pegasus::CIMInstance kept = objects[objects.size() - 1];
        objects = {};
        const std::size_t cost = HeapInUse() - before;
        std::printf("%zu bytes, all: %.1f MiB, kept: %zu KiB\n", answer.size(),
                    static_cast<double>(with_all - before) / kMebi, cost / kKibi);
        EXPECT_GT(with_all - before, answer.size() / 2) << "there was something to keep";
        return cost;
    }
};

TEST_F(KeptObject, KeepsItsBlockAndThoseOfItsNames) {
    std::string content;
    for (int i = 0; i < 700; ++i) {
        content += BlockOfOthers();
    }
    EXPECT_LE(CostOfTheLastIn(content + NamedInstance("2", Property("Filler", "x"))), 256 * kKibi);
}

/// Each of its names and texts comes from another block, as far as the caches reach back.
TEST_F(KeptObject, KeepsABlockForEachPlaceOfTheCachesAtMost) {
    std::string content;
    std::string last;
    for (const std::string& name : TextsOfAllPlaces(128)) {
        content += NamedInstance("1", Property(name, std::string(100, 'x'))) + BlockOfOthers();
        last += Property(name, std::string(100, 'x'));
    }
    int number = 0;
    for (const std::string& text : TextsOfAllPlaces(256)) {
        content += NamedInstance("1", Property("Filler", text)) + BlockOfOthers();
        last += Property("P" + std::to_string(number++), text);
    }
    const std::size_t cost = CostOfTheLastIn(content + NamedInstance("2", last));
    EXPECT_LE(cost, 13 * kMebi);
    EXPECT_GE(cost, 11 * kMebi) << "this test knows the caches' hash no more";
}

}  // namespace
