// What the exceptions that every CIM client has stand for.
#pragma once

#include <Pegasus/Client/CIMClient.h>

#include "common/records/failure.h"

namespace Zentar {

/// Kind, code and text, from the exception's class and status.
Failure CauseByClass(const Pegasus::Exception& exception);

/// In an enumeration a class that a server does not have comes as one of three statuses (DSP0200).
FailureKind KindInEnumeration(const Failure& cause);

}  // namespace Zentar
