// One namespace of a description.
#pragma once

#include "simhost/description_node.h"
#include "simhost/model.h"

namespace simhost {

/// Reads and checks a namespace's classes, instances and associations. Throws DescriptionError.
void ReadNamespace(const DescriptionNode& node, Namespace& result);

}  // namespace simhost
