// Instances as XML.
#pragma once

#include <string>
#include <vector>

#include "simhost/model.h"

namespace simhost {

/// How much of an instance a client wants.
struct InstanceFormat {
    bool qualifiers = false;
    bool class_origin = false;
    const std::vector<std::string>* property_list = nullptr;  ///< null: all properties
    const Class* only_class = nullptr;  ///< only properties that this class has; null: all
};

/// Appends a VALUE.NAMEDINSTANCE: path without namespace, and instance.
void AppendNamedInstance(const Instance& instance, const InstanceFormat& format, std::string& xml);

/// Appends a VALUE.OBJECTWITHPATH: path with host and namespace, and instance.
void AppendObjectWithPath(const Instance& instance, const std::string& host,
                          const std::string& name_space, const InstanceFormat& format,
                          std::string& xml);

}  // namespace simhost
