// Which hosts are this machine itself.
#pragma once

#include <string>

namespace command {

/// 127.0.0.0/8, ::1, and the name "localhost".
bool IsLoopback(const std::string& host);

}  // namespace command
