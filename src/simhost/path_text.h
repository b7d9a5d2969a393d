// Object paths as text.
#pragma once

#include <optional>
#include <string_view>

#include "simhost/model.h"

namespace simhost {

/// Reads `Class.A="text",B=5,C=TRUE`; backslashes escape quotes and backslashes. Nothing when the
/// text is no such path.
std::optional<ObjectPath> ParsePath(std::string_view text);

/// Brings the keys into their order.
void SortKeys(ObjectPath& path);

}  // namespace simhost
