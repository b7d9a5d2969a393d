// An access layer without a network, linked in place of the real one: it records what it is asked,
// and answers what it was told to.
#pragma once

#include <Pegasus/Client/CIMClient.h>

#include <map>
#include <string>
#include <vector>

namespace recorded_access {

/// A result code and the objects that come with it.
struct Answer {
    int result = 0;
    std::vector<Pegasus::CIMInstance> objects;
};

/// What was asked since the last Reset(), in order: "connect NAMESPACE", "disconnect NAMESPACE",
/// "enumerate NAMESPACE CLASS MILLISECONDS", "associate NAMESPACE SOURCE ASSOCIATION CLASS".
extern std::vector<std::string> calls;

/// By the enumerated class, or by the association. Others are answered with 0 and no objects.
extern std::map<std::string, Answer> answers;

/// By the enumerated class or the association, for those without an answer of their own.
extern int default_result;

void Reset();

}  // namespace recorded_access
