// The head of a CIM request over HTTP (DSP0200).
#pragma once

#include <string>

namespace cimclient {

struct RequestHead {
    std::string host;    ///< as the user named it, with the port
    std::string method;  ///< the CIM operation
    std::string object;  ///< the namespace
    std::size_t body_bytes;
    std::string authorization;  ///< the field's value, empty for none
};

/// With the empty line at its end.
std::string WriteHead(const RequestHead& head);

}  // namespace cimclient
