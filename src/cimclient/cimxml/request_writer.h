// The bodies of requests (DSP0201). Parameters that stand at their defaults are left out.
#pragma once

#include <string>

#include "Pegasus/Common/CIMObjectPath.h"

namespace cimclient {

struct EnumerateInstancesRequest {
    const Pegasus::CIMNamespaceName& name_space;
    const Pegasus::CIMName& class_name;
    bool deep_inheritance;
    bool local_only;
    bool include_qualifiers;
    bool include_class_origin;
};

struct AssociatorsRequest {
    const Pegasus::CIMNamespaceName& name_space;
    const Pegasus::CIMObjectPath& object_name;
    const Pegasus::CIMName& assoc_class;
    const Pegasus::CIMName& result_class;
    const Pegasus::String& role;
    const Pegasus::String& result_role;
    bool include_qualifiers;
    bool include_class_origin;
};

std::string WriteRequest(const EnumerateInstancesRequest& request, unsigned message_id);
std::string WriteRequest(const AssociatorsRequest& request, unsigned message_id);

}  // namespace cimclient
