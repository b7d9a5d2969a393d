// Reads reply bodies without a network: what the readers make of one piece of XML.
#pragma once

#include <gmock/gmock.h>

#include <string>

#include "Pegasus/Client/CIMClient.h"
#include "support/cim_replies.h"
#include "support/client_view.h"

namespace wire {

/// What reading this body as the answer to an enumeration comes to; @ID@ in it is the expected ID.
std::string OutcomeOfBody(const std::string& body);
/// The same for the content of the sixth line of a body that is otherwise in order.
std::string OutcomeOfContent(const std::string& content);
/// The same for Associators.
std::string OutcomeOfAssociators(const std::string& content);

/// The only instance or object of an answer. Fails the test with an exception otherwise.
Pegasus::CIMInstance InstanceOf(const std::string& named_instance);
Pegasus::CIMObject ObjectOf(const std::string& object_with_path);
/// The only property of an instance that holds this XML.
Pegasus::CIMConstProperty PropertyOf(const std::string& properties);

/// "TYPE [TEXT]" of a property of this type with this content of its VALUE element.
std::string ValueOf(const std::string& type, const std::string& text);
/// The same of an array with this content of its VALUE.ARRAY element.
std::string ArrayOf(const std::string& type, const std::string& elements);
/// The text that this content of a VALUE element stands for, or the failure.
std::string TextOfValue(const std::string& content);

/// The names of the instance's properties, a blank after each.
std::string NamesIn(const std::string& properties);

}  // namespace wire
