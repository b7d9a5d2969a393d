// Puts objects together from parts that have been read, past the checks made for hand-built ones.
#pragma once

#include <vector>

#include "Pegasus/Common/CIMObject.h"

namespace cimclient {

/// Of qualifiers or properties of one name the first counts. What is kept is moved out of `all`.
template <class Named>
Pegasus::Array<Named> FirstOfEachName(std::vector<Named>& all);

/// Takes the first of each name out of both.
Pegasus::CIMInstance AssembleInstance(const Pegasus::CIMObjectPath& path,
                                      std::vector<Pegasus::CIMQualifier>& qualifiers,
                                      std::vector<Pegasus::CIMProperty>& properties);

}  // namespace cimclient
