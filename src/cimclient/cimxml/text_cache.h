// Texts and names recur from instance to instance, and keys come again as properties: one copy
// serves all.
#pragma once

#include <array>
#include <string_view>

#include "Pegasus/Common/CIMName.h"

namespace cimclient {

class TextCache {
public:
    /// `text` is UTF-8.
    Pegasus::String Text(std::string_view text);

private:
    std::array<Pegasus::String, 256> texts_;
};

class NameCache {
public:
    /// Null for a text that is no legal name.
    Pegasus::CIMName Name(std::string_view text);

private:
    std::array<Pegasus::CIMName, 128> names_;
};

}  // namespace cimclient
