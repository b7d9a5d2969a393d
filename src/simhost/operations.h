// What a host answers to a CIM operation.
#pragma once

#include <string>
#include <variant>

#include "simhost/cim_request.h"
#include "simhost/host_variant.h"

namespace simhost {

struct CimError {
    unsigned code = 0;
    std::string description;
};

/// The XML of the returned elements, possibly none.
using OperationResult = std::variant<std::string, CimError>;

OperationResult Perform(const HostVariant& host, const CimRequest& request);

}  // namespace simhost
