// Which properties a request asks for.
#pragma once

#include "Pegasus/Common/Config.h"

PEGASUS_NAMESPACE_BEGIN

/// A null list, which asks for all properties.
class CIMPropertyList {};

PEGASUS_NAMESPACE_END
