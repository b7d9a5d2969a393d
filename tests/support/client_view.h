// What the client's API gives, as text that tests can compare.
#pragma once

#include <functional>
#include <string>

#include "Pegasus/Client/CIMClient.h"

namespace support {

/// UTF-8.
std::string TextOf(const Pegasus::String& text);

/// The path's text, then a line "  NAME = [VALUE]" for each property.
std::string ViewOf(const Pegasus::CIMInstance& instance);
/// The same; the lines end in " quals=COUNT", the property's number of qualifiers.
std::string ViewOf(const Pegasus::CIMObject& object);

/// The type, the value's text in brackets, "null" in place of a null: "uint16[] [2 3 ]".
std::string ViewOf(const Pegasus::CIMValue& value);

/// "CLASS [MESSAGE]" of the exception that the call ends in, with the code after the class of
/// those that have one: "CIMException 5 [no such class]". "nothing thrown" without one.
std::string FailureOf(const std::function<void()>& call);

/// "COUNT objects" of an array's elements, or the failure of the call that gives the array.
template <class Call>
std::string OutcomeOf(Call call) {
    std::string outcome;
    const std::string failure =
        FailureOf([&] { outcome = std::to_string(call().size()) + " objects"; });
    return outcome.empty() ? failure : outcome;
}

}  // namespace support
