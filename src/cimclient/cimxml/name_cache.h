// Names recur in every instance; the same few are handed out again and again.
#pragma once

#include <array>
#include <string_view>

#include "Pegasus/Common/CIMName.h"

namespace cimclient {

class NameCache {
public:
    /// Null for a text that is no legal name.
    Pegasus::CIMName Name(std::string_view text);

private:
    std::array<Pegasus::CIMName, 128> names_;
};

}  // namespace cimclient
