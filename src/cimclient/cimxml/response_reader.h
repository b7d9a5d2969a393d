// The bodies of replies (DSP0201).
#pragma once

#include "Pegasus/Common/CIMInstance.h"
#include "Pegasus/Common/CIMObject.h"
#include "xml/xml_reader.h"

namespace cimclient {

/// Each reads the reply to the message with the given ID while it arrives. An ERROR element throws
/// StatusError; what is no such reply throws XmlError or ResponseError.
Pegasus::Array<Pegasus::CIMInstance> ReadInstances(const XmlReader::Source& body,
                                                   unsigned message_id);
Pegasus::Array<Pegasus::CIMObject> ReadObjects(const XmlReader::Source& body, unsigned message_id);

}  // namespace cimclient
