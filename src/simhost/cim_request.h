// One CIM operation as a client asks for it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "simhost/model.h"

namespace simhost {

/// The parameters of EnumerateInstances and Associators, at the standard's default values.
struct CimRequest {
    std::string message_id;
    std::string operation;
    bool intrinsic = true;  ///< IMETHODCALL, not METHODCALL
    std::string name_space;

    std::string class_name;
    std::optional<ObjectPath> source;  ///< none also when the source is a class
    std::string association_class, result_class, role, result_role;  ///< empty: no filter
    bool deep_inheritance = true;
    bool include_qualifiers = false;
    bool include_class_origin = false;
    std::optional<std::vector<std::string>> property_list;
};

/// Reads a request's body. Fails with the value that a CIMError header has for it.
struct CimRequestResult {
    CimRequest request;
    std::string error;  ///< empty: no error
};
CimRequestResult ReadCimRequest(std::string_view body);

}  // namespace simhost
