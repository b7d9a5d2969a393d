#include "simhost/descriptor_limit.h"

#include <sys/resource.h>

namespace simhost {

std::size_t RaiseDescriptorLimit(std::size_t wanted) {
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    if (limit.rlim_cur < wanted) {
        const rlimit raised{limit.rlim_max, limit.rlim_max};
        return setrlimit(RLIMIT_NOFILE, &raised) == 0 ? raised.rlim_cur : limit.rlim_cur;
    }
    return limit.rlim_cur;
}

}  // namespace simhost
