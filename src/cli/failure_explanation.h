// What the reasons of failures mean, and what to try.
#pragma once

#include <string_view>

namespace command {

enum class Cause {
    kRefused,      ///< the account was not let in
    kUnreachable,  ///< no connection, or no answer
    kNoCimServer,  ///< something else answers there
    kBadReply,     ///< a CIM server's reply that could not be used
    kCimError,     ///< the CIM server answered that it cannot
};

struct Explanation {
    Cause cause;
    const char* meaning;  ///< what happened, as the part of a sentence
    const char* remedy;   ///< what to try
};

/// Explains a reason that the module logged. Any text is explained, also an empty one: what is none
/// of the client's own texts was written by the host's CIM server.
const Explanation& Explain(std::string_view reason);

}  // namespace command
