#pragma once

#include <Pegasus/Common/Config.h>

namespace Pegasus {

class Char16 {
public:
    Char16();
    Char16(Uint16 x);
    Char16(const Char16&);
    ~Char16();
    Char16& operator=(Uint16 x);
    Char16& operator=(const Char16& x);
    operator Uint16() const;
};
Boolean operator==(const Char16&, const Char16&);
Boolean operator==(const Char16&, char);
Boolean operator==(char, const Char16&);
Boolean operator!=(const Char16&, const Char16&);
Boolean operator!=(const Char16&, char);
Boolean operator!=(char, const Char16&);

}  // namespace Pegasus
