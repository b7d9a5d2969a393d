#include "simhost/host_variant.h"

namespace simhost {

const Instance* HostVariant::Shown(const Instance& described) const {
    const auto differing = differing_.find(&described);
    if (differing == differing_.end()) {
        return &described;
    }
    return differing->second ? &*differing->second : nullptr;
}

const Instance* HostVariant::Find(const Namespace& in, const ObjectPath& path) const {
    const Class* const described = in.FindClass(path.class_name);
    if (described == nullptr) {
        return nullptr;
    }
    for (const Instance& instance : described->instances) {
        const Instance* const shown = Shown(instance);
        if (shown != nullptr && shown->path.Denotes(path)) {
            return &instance;
        }
    }
    return nullptr;
}

Instance& HostVariant::Own(const Instance& described) {
    std::optional<Instance>& own = differing_[&described];
    if (!own) {
        own = described;
    }
    return *own;
}

}  // namespace simhost
