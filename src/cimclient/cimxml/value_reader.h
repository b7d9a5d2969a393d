// Values of properties and qualifiers from their texts.
#pragma once

#include <optional>
#include <string_view>

#include "Pegasus/Common/CIMValue.h"
#include "cimxml/text_cache.h"

namespace cimclient {

/// What the wire held for one scalar or array element; nothing for VALUE.NULL. Lives as long as the
/// text that is read, and until the next property.
using ValueText = std::optional<std::string_view>;
using ValueTexts = Pegasus::detail::ArenaVector<ValueText>;

/// A text that does not suit the type gives null.
Pegasus::CIMValue ScalarFrom(Pegasus::CIMType type, const ValueText& text, TextCache& cache);

/// An element without text, or whose text does not suit the type, keeps its place and prints empty.
Pegasus::CIMValue ArrayFrom(Pegasus::CIMType type, const ValueTexts& texts, TextCache& cache);

}  // namespace cimclient
