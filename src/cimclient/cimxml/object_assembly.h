// Puts objects together from parts that have been read, past the checks made for hand-built ones.
#pragma once

#include "Pegasus/Common/CIMObject.h"

namespace cimclient {

/// Of qualifiers or properties of one name the first counts. What is kept is moved out of `all`.
template <class Named>
Pegasus::Array<Named> FirstOfEachName(Pegasus::detail::ArenaVector<Named>& all);

/// Takes the first of each name out of both.
Pegasus::CIMInstance AssembleInstance(
    const Pegasus::CIMObjectPath& path,
    Pegasus::detail::ArenaVector<Pegasus::CIMQualifier>& qualifiers,
    Pegasus::detail::ArenaVector<Pegasus::CIMProperty>& properties);

}  // namespace cimclient
