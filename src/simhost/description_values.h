// Values and qualifiers of a description as XML.
#pragma once

#include <string>

#include "simhost/cim_type.h"
#include "simhost/description_node.h"

namespace simhost {

/// The VALUE or VALUE.ARRAY element of a value, empty for null. A value {"xml": "..."} is taken
/// as it stands. Fails on a value that the type cannot have; a string is right for every type and
/// goes out as it is.
std::string ValueXml(const DescriptionNode& value, const CimType& type, bool array);

/// The text of a key's value; fails on null, arrays and raw XML.
std::string KeyText(const DescriptionNode& value, const CimType& type);

/// The QUALIFIER elements of an object of name to value.
std::string QualifiersXml(const DescriptionNode& qualifiers);

}  // namespace simhost
