// The bodies of replies (DSP0201).
#pragma once

#include <string_view>

#include "Pegasus/Common/CIMInstance.h"
#include "Pegasus/Common/CIMObject.h"

namespace cimclient {

/// Each reads the reply to the message with the given ID. An ERROR element throws CIMException;
/// what is no such reply throws CIMClientXmlException or CIMClientResponseException.
Pegasus::Array<Pegasus::CIMInstance> ReadInstances(std::string_view body, unsigned message_id);
Pegasus::Array<Pegasus::CIMObject> ReadObjects(std::string_view body, unsigned message_id);

}  // namespace cimclient
