// Instances of CIM classes.
//
// CIMInstance and CIMConstInstance are handles: copies speak of one instance, clone() makes
// another. A default-constructed handle throws UninitializedObjectException in all members but
// isUninitialized.
#pragma once

#include "Pegasus/Common/CIMObject.h"
