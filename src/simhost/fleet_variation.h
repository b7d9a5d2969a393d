// The hosts of a fleet, made from one description.
#pragma once

#include <cstdint>

#include "simhost/host_variant.h"

namespace simhost {

/// The described host with the identity of this number: the same on every machine, in every run.
/// Only values that the description has are replaced. It must outlive the variant.
HostVariant NumberedVariant(const Host& described, std::uint32_t number);

}  // namespace simhost
