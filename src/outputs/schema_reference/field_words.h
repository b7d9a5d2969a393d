// What references say of a field, in words.
#pragma once

#include <string>

#include "inventory/document.h"

namespace outputs {

/// Its type with its unit: "integer (bit/s)".
std::string TypeWords(const schema::Field& field);

/// The property that it is read from, with the class where that is not the kind's:
/// "Speed", "OtherIdentifyingInfo of IBM_ComputerSystem".
std::string SourceWords(const schema::Field& field);

/// "identity", "varies", both with a comma, or nothing.
std::string TraitWords(const schema::Field& field);

}  // namespace outputs
