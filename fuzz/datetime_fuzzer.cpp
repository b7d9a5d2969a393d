// Texts of date-times. What is one has 25 characters, of which few kinds are allowed.
#include "object_model/datetime.h"
#include "target.h"

void fuzz::Try(std::string_view input) {
    if (Pegasus::detail::IsDateTime(input)) {
        Require(input.size() == 25);
        Require(input.find_first_not_of("0123456789*.:+-") == std::string_view::npos);
    }
}
