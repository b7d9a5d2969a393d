// Basic types of the CIM client API.
#pragma once

// The inline namespace keeps these classes' symbols apart from those of another CIM client with the
// same class names that the process may have loaded.
#define PEGASUS_NAMESPACE_BEGIN \
    namespace Pegasus {         \
    inline namespace kalvex {
#define PEGASUS_NAMESPACE_END \
    }                         \
    }

// Without the namespace, as another client of this API has it: callers must make the name visible.
#define PEG_NOT_FOUND Uint32(-1)

PEGASUS_NAMESPACE_BEGIN

using Boolean = bool;
using Uint8 = unsigned char;
using Sint8 = signed char;
using Uint16 = unsigned short;
using Sint16 = signed short;
using Uint32 = unsigned int;
using Sint32 = signed int;
using Uint64 = unsigned long long;
using Sint64 = long long;
using Real32 = float;
using Real64 = double;

PEGASUS_NAMESPACE_END
