#include "common/platform/own_library.h"

#include <dlfcn.h>

namespace Zentar {

void KeepOwnLibrary() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&KeepOwnLibrary), &info) != 0) {
        // The handle is kept on purpose: RTLD_NODELETE lasts anyway.
        dlopen(info.dli_fname, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE);
    }
}

}  // namespace Zentar
