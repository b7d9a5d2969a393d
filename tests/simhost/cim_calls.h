// Requests as a stock client writes them.
#pragma once

#include <string>

namespace simhost_test {

/// With the empty line's headers before it: each given line ends with CRLF.
struct CallOptions {
    std::string headers = "TE: chunked, trailers\r\n";
    std::string parameters;  ///< IPARAMVALUE elements after the first
};

/// `CIMMethod` and `CIMObject` agree with the body.
std::string Call(const std::string& operation, const std::string& name_space,
                 const std::string& parameters, const std::string& headers);

std::string Enumerate(const std::string& name_space, const std::string& class_name,
                      const CallOptions& options = {});

/// `keys` are KEYBINDING elements.
std::string Associators(const std::string& name_space, const std::string& class_name,
                        const std::string& keys, const CallOptions& options = {});

/// One KEYBINDING of a string.
std::string Key(const std::string& name, const std::string& value);
/// IPARAMVALUE elements with a class name, with a plain value.
std::string ClassParameter(const std::string& name, const std::string& class_name);
std::string Parameter(const std::string& name, const std::string& value);

/// A POST of this body.
std::string Post(const std::string& headers, const std::string& body);

}  // namespace simhost_test
