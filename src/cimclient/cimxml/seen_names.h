// Tells names that have occurred before, in any case.
#pragma once

#include <string>
#include <unordered_set>

#include "Pegasus/Common/CIMName.h"

namespace cimclient {

class SeenNames {
public:
    /// False when the name has been added before.
    bool Add(const Pegasus::CIMName& name) {
        Pegasus::String lower = name.getString();
        lower.toLower();
        return names_.insert(std::string(lower.utf8())).second;
    }

private:
    std::unordered_set<std::string> names_;
};

}  // namespace cimclient
