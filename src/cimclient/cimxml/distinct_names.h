// Names occur once in an object.
#pragma once

#include "Pegasus/Common/CIMObject.h"

namespace cimclient {

/// Of qualifiers or properties of one name the first counts. What is kept is moved out of `all`.
template <class Named>
Pegasus::Array<Named> FirstOfEachName(Pegasus::detail::ArenaVector<Named>& all);

}  // namespace cimclient
