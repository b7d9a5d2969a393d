// One UTF-16 code unit.
#pragma once

#include "Pegasus/Common/Config.h"

PEGASUS_NAMESPACE_BEGIN

class Char16 {
public:
    Char16() = default;
    Char16(Uint16 x) : unit_(x) {}
    Char16& operator=(Uint16 x) {
        unit_ = x;
        return *this;
    }
    operator Uint16() const { return unit_; }

private:
    Uint16 unit_ = 0;
};

inline Boolean operator==(const Char16& x, const Char16& y) { return Uint16(x) == Uint16(y); }
inline Boolean operator==(const Char16& x, char y) {
    return Uint16(x) == static_cast<unsigned char>(y);
}
inline Boolean operator==(char x, const Char16& y) { return y == x; }
inline Boolean operator!=(const Char16& x, const Char16& y) { return !(x == y); }
inline Boolean operator!=(const Char16& x, char y) { return !(x == y); }
inline Boolean operator!=(char x, const Char16& y) { return !(x == y); }

PEGASUS_NAMESPACE_END
