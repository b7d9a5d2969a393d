// The instances of one class of a description.
#pragma once

#include "simhost/description_node.h"
#include "simhost/model.h"

namespace simhost {

/// Reads "instances", then "columns" and "rows". The class's properties and keys are known.
void ReadInstances(const DescriptionNode& class_node, Class& result);

}  // namespace simhost
