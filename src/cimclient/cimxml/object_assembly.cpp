#include "cimxml/object_assembly.h"

#include <cstdint>
#include <utility>

#include "cimxml/seen_names.h"

namespace cimclient {

using namespace Pegasus;
using Pegasus::detail::Pieces;

namespace {

/// Up to this many, comparing each with each is quicker than hashing.
constexpr std::size_t kFewNames = 32;

/// Tells most names apart at a glance: each marks one of 64 places, by its length and letters.
class MarkedNames {
public:
    /// True when no name that may be the same has been added before.
    bool Add(const CIMName& name) {
        const std::string_view text = name.getString().utf8();
        const auto letter = [](char c) { return static_cast<unsigned>(c) & 0x1F; };  // in any case
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
bool HasName(const Pieces<Named>& named, const CIMName& name) {
    for (const Named& one : named) {
        if (one.getName() == name) {
            return true;
        }
    }
    return false;
}

}  // namespace

template <class Named>
Pieces<Named> FirstOfEachName(std::vector<Named>& all) {
    Pieces<Named> kept;
    kept.reserve(all.size());
    SeenNames seen;
    MarkedNames marked;
    const bool few = all.size() <= kFewNames;
    for (Named& one : all) {
        const bool is_new = few ? marked.Add(one.getName()) || !HasName(kept, one.getName())
                                : seen.Add(one.getName());
        if (is_new) {
            kept.push_back(std::move(one));
        }
    }
    return kept;
}

template Pieces<CIMQualifier> FirstOfEachName(std::vector<CIMQualifier>& all);

CIMInstance AssembleInstance(const CIMObjectPath& path, std::vector<CIMQualifier>& qualifiers,
                             std::vector<CIMProperty>& properties) {
    CIMInstance instance;
    auto& body = Pegasus::detail::ObjectAccess::MakeBody(instance);
    body.path = path;
    body.qualifiers = FirstOfEachName(qualifiers);
    body.properties = FirstOfEachName(properties);
    return instance;
}

}  // namespace cimclient
