// Instances of CIM classes: see CIMObject.h.
#pragma once

#include "Pegasus/Common/CIMObject.h"
