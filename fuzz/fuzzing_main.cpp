// libFuzzer makes inputs and looks for those that reach new code.
#include <cstddef>
#include <cstdint>

#include "target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Try({reinterpret_cast<const char*>(data), size});
    return 0;
}
