// The logging interface that the module writes through. A host application may put its own library
// with these symbols in place of the reference library.
#pragma once

#include <sstream>

#include "common/log/log_export.h"

namespace Zentar {

/// One log message: constructed with its level and source position, filled through Stream(), and
/// emitted whole by the destructor. Levels: 1 failures, 2 properties that an instance lacks,
/// 3 progress and results, 4 traces. Messages may be built on many threads at once.
class ZENTAR_LOG_EXPORT Log {
public:
    /// Cold, so that what builds a message lies apart from the code around it: that runs a percent
    /// faster while no message is wanted.
    [[gnu::cold]] Log(unsigned level, const char* file, int line);
    ~Log();
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;

    std::ostringstream& Stream();

    /// The highest level to build messages for; 0 builds none.
    static unsigned GetMinLogLevel();

private:
    unsigned level_;
    const char* file_;
    int line_;
    std::ostringstream stream_;
};

}  // namespace Zentar
