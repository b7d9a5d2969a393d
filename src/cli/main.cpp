// The kalvex command.
#include "cli/run_command.h"

/// Saying what happened may take more memory than there is, too.
int main(int argc, char** argv) {
    try {
        return command::RunCommand(argc, argv);
    } catch (...) {
        return command::FailForMemory();
    }
}
