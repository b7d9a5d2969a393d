#include "cimxml/object_assembly.h"

#include <utility>

#include "Pegasus/Client/CIMClientException.h"
#include "cimxml/seen_names.h"

namespace cimclient {

using namespace Pegasus;

namespace {

/// Up to this many, comparing each with each is quicker than hashing.
constexpr std::size_t kFewNames = 32;

template <class Named>
bool HasName(const std::vector<Named>& named, const CIMName& name) {
    for (const Named& one : named) {
        if (one.getName() == name) {
            return true;
        }
    }
    return false;
}

}  // namespace

template <class Named>
std::vector<Named> FirstOfEachName(std::vector<Named>& all) {
    std::vector<Named> kept;
    kept.reserve(all.size());
    SeenNames seen;
    const bool few = all.size() <= kFewNames;
    for (Named& one : all) {
        if (few ? !HasName(kept, one.getName()) : seen.Add(one.getName())) {
            kept.push_back(std::move(one));
        }
    }
    return kept;
}

template std::vector<CIMQualifier> FirstOfEachName(std::vector<CIMQualifier>& all);

CIMInstance AssembleInstance(const CIMName& class_name, std::vector<CIMQualifier>& qualifiers,
                             std::vector<CIMProperty>& properties) {
    CIMInstance instance(class_name);
    auto& body = Pegasus::detail::ObjectAccess::Body(instance);
    body.qualifiers = FirstOfEachName(qualifiers);
    body.properties = FirstOfEachName(properties);
    return instance;
}

template <class Object>
void SetPath(Object& object, const CIMObjectPath& path) {
    if (object.getClassName() != path.getClassName()) {
        throw CIMClientResponseException(TypeMismatchException().getMessage());
    }
    object.setPath(path);
}

template void SetPath(CIMInstance& object, const CIMObjectPath& path);
template void SetPath(CIMObject& object, const CIMObjectPath& path);

}  // namespace cimclient
