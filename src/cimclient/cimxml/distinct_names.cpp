#include "cimxml/distinct_names.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <utility>

#include "common/text/ascii.h"

namespace cimclient {

using namespace Pegasus;
using Pegasus::detail::ArenaVector;
using Pegasus::detail::FindByName;

namespace {

/// Up to this many, comparing each with each is quicker than sorting.
constexpr std::size_t kFewNames = 32;

/// A Bloom filter: each name sets one of 64 bits, by its length and letters.
class BloomFilter {
public:
    /// True when no name that may be the same has been added before.
    bool Add(const CIMName& name) {
        const std::string_view text = name.getString().utf8();
        const auto letter = [](char c) {
            return static_cast<std::size_t>(c) & 0x1F;
        };  // in any case
        const auto hash = text.size() * 7 + letter(text.front()) * 3 + letter(text.back());
        const std::uint64_t bit = std::uint64_t{1} << (hash % 64);
        const bool is_new = (bits_ & bit) == 0;
        bits_ |= bit;
        return is_new;
    }

private:
    std::uint64_t bits_ = 0;
};

int Compare(const CIMName& x, const CIMName& y) {
    return Zentar::CompareNoCase(x.getString().utf8(), y.getString().utf8());
}

/// Of each, whether its name occurs before it. Sorting takes its time, but no host can choose
/// names that make it take much longer, as it could with hashing.
template <class Named>
std::vector<bool> Repetitions(const ArenaVector<Named>& all) {
    ArenaVector<std::size_t> order(all.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [&](std::size_t x, std::size_t y) {
        const int comparison = Compare(all[x].getName(), all[y].getName());
        return comparison != 0 ? comparison < 0 : x < y;
    });
    std::vector<bool> repeats(all.size());
    for (std::size_t i = 1; i < order.size(); ++i) {
        repeats[order[i]] = Compare(all[order[i - 1]].getName(), all[order[i]].getName()) == 0;
    }
    return repeats;
}

}  // namespace

template <class Named>
Array<Named> FirstOfEachName(ArenaVector<Named>& all) {
    Array<Named> kept;
    if (all.empty()) {
        return kept;
    }
    kept.reserveCapacity(static_cast<Uint32>(all.size()));
    const bool are_few = all.size() <= kFewNames;
    const std::vector<bool> repeats = are_few ? std::vector<bool>() : Repetitions(all);
    BloomFilter filter;
    for (std::size_t i = 0; i < all.size(); ++i) {
        const CIMName& name = all[i].getName();
        if (are_few ? filter.Add(name) || FindByName(kept, name) == PEG_NOT_FOUND : !repeats[i]) {
            kept.append(std::move(all[i]));
        }
    }
    return kept;
}

template Array<CIMQualifier> FirstOfEachName(ArenaVector<CIMQualifier>& all);
template Array<CIMProperty> FirstOfEachName(ArenaVector<CIMProperty>& all);

}  // namespace cimclient
