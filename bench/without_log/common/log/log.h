// Stands in for the logging interface where the module is compiled without its log. Nothing of it
// has a body: a message that were still built would not link.
#pragma once

#include <sstream>

namespace Zentar {

class Log {
public:
    Log(unsigned level, const char* file, int line);
    ~Log();
    std::ostringstream& Stream();
    static constexpr unsigned GetMinLogLevel() { return 0; }
};

}  // namespace Zentar
