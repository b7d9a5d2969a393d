// The limits of a fault, as command lines and files write them.
#pragma once

#include <string>
#include <string_view>

#include "simhost/fault.h"

namespace simhost {

/// Reads "LIMIT[,LIMIT]..." into the fault, where LIMIT is "CLASS", "operation:NAME",
/// "after:COUNT" or "times:COUNT". Gives what to write instead when it cannot; else nothing.
std::string ReadLimits(std::string_view text, Fault& fault);

}  // namespace simhost
