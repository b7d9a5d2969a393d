// Basic types of the CIM client API. Like an installed library's, these headers need to be told the
// platform.
#pragma once

#if !defined(PEGASUS_PLATFORM_LINUX_X86_64_GNU) &&                                                 \
    !defined(PEGASUS_PLATFORM_LINUX_X86_64_CLANG) && !defined(PEGASUS_PLATFORM_LINUX_IX86_GNU) &&  \
    !defined(PEGASUS_PLATFORM_LINUX_IX86_CLANG) && !defined(PEGASUS_PLATFORM_LINUX_AARCH64_GNU) && \
    !defined(PEGASUS_PLATFORM_LINUX_PPC64_GNU) &&                                                  \
    !defined(PEGASUS_PLATFORM_LINUX_ZSERIES64_GNU) && !defined(PEGASUS_PLATFORM_LINUX_XSCALE_GNU)
#error "unsupported platform"
#endif

#define PEG_NOT_FOUND Pegasus::Uint32(-1)

namespace Pegasus {

typedef bool Boolean;
typedef unsigned char Uint8;
typedef signed char Sint8;
typedef unsigned short Uint16;
typedef signed short Sint16;
typedef unsigned int Uint32;
typedef signed int Sint32;
typedef unsigned long long Uint64;
typedef long long Sint64;
typedef float Real32;
typedef double Real64;

}  // namespace Pegasus
