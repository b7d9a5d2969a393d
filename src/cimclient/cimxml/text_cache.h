// Texts recur from instance to instance, and keys come again as properties: one copy serves all.
#pragma once

#include <array>
#include <string_view>

#include "Pegasus/Common/String.h"

namespace cimclient {

class TextCache {
public:
    /// `text` is UTF-8.
    Pegasus::String Text(std::string_view text);

private:
    std::array<Pegasus::String, 256> texts_;
};

}  // namespace cimclient
