#include "module/exsi/leading_number.h"

#include <locale>
#include <sstream>

namespace Zentar::Agentless {

std::optional<std::int32_t> LeadingNumber(const std::string& text) {
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    std::int32_t number = 0;
    // A clamped number sets the stream's failure state as well, but it is never 0.
    if (!(stream >> number) && number == 0) {
        return std::nullopt;
    }
    return number;
}

}  // namespace Zentar::Agentless
