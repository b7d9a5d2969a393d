// Base64, as Basic authentication writes credentials.
#pragma once

#include <string>
#include <string_view>

namespace simhost {

std::string Base64(std::string_view bytes);

}  // namespace simhost
