// CIM status codes (DSP0200).
#pragma once

#include "Pegasus/Common/Config.h"

PEGASUS_NAMESPACE_BEGIN

/// Servers send more than have a name here; each is kept as the number that it is.
enum CIMStatusCode : int {
    CIM_ERR_FAILED = 1,
    CIM_ERR_ACCESS_DENIED = 2,
    CIM_ERR_INVALID_NAMESPACE = 3,
    CIM_ERR_INVALID_CLASS = 5,
    CIM_ERR_NOT_FOUND = 6,
    CIM_ERR_NOT_SUPPORTED = 7,
};

PEGASUS_NAMESPACE_END
