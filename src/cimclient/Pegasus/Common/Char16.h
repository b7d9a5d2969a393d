// One UTF-16 code unit.
#pragma once

#include "Pegasus/Common/Config.h"

PEGASUS_NAMESPACE_BEGIN

class Char16 {
public:
    Char16() = default;
    Char16(Uint16 x) : unit_(x) {}
    operator Uint16() const { return unit_; }

private:
    Uint16 unit_ = 0;
};

PEGASUS_NAMESPACE_END
