#include "fresh_process.h"

#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <exception>
#include <stdexcept>

namespace bench {

namespace {

[[noreturn]] void RunChild(const std::function<double()>& measure, int result) {
    try {
        malloc_trim(0);
        const double value = measure();
        _exit(write(result, &value, sizeof value) == sizeof value ? 0 : 1);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "measurement: %s\n", e.what());
        _exit(1);
    }
}

}  // namespace

double InFreshProcess(const std::function<double()>& measure) {
    int ends[2];
    if (pipe(ends) != 0) {
        throw std::runtime_error("cannot make a pipe");
    }
    const pid_t child = fork();
    if (child == 0) {
        close(ends[0]);
        RunChild(measure, ends[1]);
    }
    close(ends[1]);
    double value = 0;
    const bool measured = child > 0 && read(ends[0], &value, sizeof value) == sizeof value;
    close(ends[0]);
    waitpid(child, nullptr, 0);
    if (!measured) {
        throw std::runtime_error("a measurement failed in its process");
    }
    return value;
}

}  // namespace bench
