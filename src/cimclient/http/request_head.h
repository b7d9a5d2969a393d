// CIM requests over HTTP (DSP0200).
#pragma once

#include <string>
#include <string_view>

#include "common/platform/secret.h"

namespace cimclient {

struct RequestHead {
    std::string host;                ///< as the user named it, with the port
    std::string method;              ///< the CIM operation
    std::string object;              ///< the namespace
    std::string_view authorization;  ///< the field's value, empty for none
};

/// Head and body.
Zentar::Secret WriteHttpRequest(const RequestHead& head, std::string_view body);

}  // namespace cimclient
