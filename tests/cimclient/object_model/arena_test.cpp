// Memory from the blocks of an arena.
#include "object_model/arena.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <thread>

#include "Pegasus/Common/ArenaVector.h"
#include "Pegasus/Common/CIMInstance.h"

namespace {

using namespace Pegasus;
using detail::Arena;

constexpr std::size_t kSizes[] = {1, 7, 8, 24, 100, 1000, 1016, 1017, 5000, 100'000};

/// Allocations of many sizes, filled so that one that reaches into another is noticed.
class FilledMemory {
public:
    FilledMemory() {
        for (int round = 0; round < 50; ++round) {
            for (const std::size_t size : kSizes) {
                void* const memory = detail::ArenaAllocate(size);
                std::memset(memory, Mark(), size);
                allocations_.push_back({memory, size});
            }
        }
    }
    ~FilledMemory() {
        for (const Allocation& one : allocations_) {
            detail::ArenaFree(one.memory);
        }
    }
    FilledMemory(const FilledMemory&) = delete;
    FilledMemory& operator=(const FilledMemory&) = delete;

    void ExpectIntact() const {
        int mark = 0;
        for (const Allocation& one : allocations_) {
            const std::string expected(one.size, static_cast<char>(mark++ % 251));
            EXPECT_EQ(std::memcmp(one.memory, expected.data(), one.size), 0) << one.size;
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(one.memory) % 8, 0U) << one.size;
        }
    }

private:
    struct Allocation {
        void* memory;
        std::size_t size;
    };
    int Mark() const { return static_cast<int>(allocations_.size() % 251); }

    std::vector<Allocation> allocations_;
};

TEST(Arena, AllocationsAreApartAndAligned) {
    const Arena arena;
    FilledMemory().ExpectIntact();
}

TEST(Arena, AllocationsFromTheHeapAreTheSame) { FilledMemory().ExpectIntact(); }

TEST(Arena, AllocationsOutliveTheArena) {
    std::optional<Arena> arena(std::in_place);
    const FilledMemory memory;
    arena.reset();
    FilledMemory().ExpectIntact();
    memory.ExpectIntact();
}

TEST(Arena, ScopesNest) {
    const Arena outer;
    const FilledMemory before;
    {
        const Arena inner;
        FilledMemory().ExpectIntact();
    }
    const FilledMemory after;
    before.ExpectIntact();
    after.ExpectIntact();
}

TEST(Arena, ObjectsMayEndOnAnotherThreadWhileMoreAreMade) {
    for (int round = 0; round < 20; ++round) {
        const Arena arena;
        Array<CIMInstance> instances;
        for (int i = 0; i < 200; ++i) {
            CIMInstance instance(CIMName("Class"));
            instance.addProperty(CIMProperty(CIMName("Name"), CIMValue(String("a text"))));
            instances.append(instance);
        }
        std::thread other([taken = std::move(instances)]() mutable { taken = {}; });
        FilledMemory().ExpectIntact();
        other.join();
    }
}

}  // namespace
