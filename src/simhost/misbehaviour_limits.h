// The limits of a misbehaviour, as command lines and files write them.
#pragma once

#include <string>
#include <string_view>

#include "simhost/misbehaviour.h"

namespace simhost {

/// Reads "LIMIT[,LIMIT]..." into the misbehaviour, where LIMIT is "CLASS", "operation:NAME",
/// "after:COUNT" or "times:COUNT". Gives what to write instead when it cannot; else nothing.
std::string ReadLimits(std::string_view text, Misbehaviour& misbehaviour);

}  // namespace simhost
