#include "cimxml/object_assembly.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <utility>

#include "ascii.h"

namespace cimclient {

using namespace Pegasus;
using Pegasus::detail::ArenaVector;

namespace {

/// Up to this many, comparing each with each is quicker than sorting.
constexpr std::size_t kFewNames = 32;

/// Distinguishes most names at a glance: each marks one of 64 places, by its length and letters.
class MarkedNames {
public:
    /// True when no name that may be the same has been added before.
    bool Add(const CIMName& name) {
        const std::string_view text = name.getString().utf8();
        const auto letter = [](char c) { return static_cast<std::size_t>(c) & 0x1F; };  // any case
        const std::uint64_t mark = std::uint64_t{1}
                                   << ((text.size() * 7 + letter(text.front()) * 3 +
                                        letter(text.back())) %
                                       64);
        const bool is_new = (marks_ & mark) == 0;
        marks_ |= mark;
        return is_new;
    }

private:
    std::uint64_t marks_ = 0;
};

template <class Named>
bool HasName(const Array<Named>& named, const CIMName& name) {
    for (Uint32 i = 0; i < named.size(); ++i) {
        if (named[i].getName() == name) {
            return true;
        }
    }
    return false;
}

int Compare(const CIMName& x, const CIMName& y) {
    return CompareNoCase(x.getString().utf8(), y.getString().utf8());
}

/// Reports of each whether its name occurs before it. Sorting takes its time, but no host can
/// choose names that make it take much longer, as it could with hashing.
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

template <class Named>
Array<Named> FirstOfFew(ArenaVector<Named>& all) {
    Array<Named> kept;
    kept.reserveCapacity(static_cast<Uint32>(all.size()));
    MarkedNames marked;
    for (Named& one : all) {
        if (marked.Add(one.getName()) || !HasName(kept, one.getName())) {
            kept.append(std::move(one));
        }
    }
    return kept;
}

}  // namespace

template <class Named>
Array<Named> FirstOfEachName(ArenaVector<Named>& all) {
    if (all.empty()) {
        return {};
    }
    if (all.size() <= kFewNames) {
        return FirstOfFew(all);
    }
    const std::vector<bool> repeats = Repetitions(all);
    Array<Named> kept;
    kept.reserveCapacity(static_cast<Uint32>(all.size()));
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (!repeats[i]) {
            kept.append(std::move(all[i]));
        }
    }
    return kept;
}

template Array<CIMQualifier> FirstOfEachName(ArenaVector<CIMQualifier>& all);

CIMInstance AssembleInstance(const CIMObjectPath& path, ArenaVector<CIMQualifier>& qualifiers,
                             ArenaVector<CIMProperty>& properties) {
    Pegasus::detail::Shared<Pegasus::detail::ObjectBody> body(new Pegasus::detail::ObjectBody);
    body->path = path;
    body->qualifiers = FirstOfEachName(qualifiers);
    body->properties = FirstOfEachName(properties);
    return CIMInstance(std::move(body));
}

}  // namespace cimclient
