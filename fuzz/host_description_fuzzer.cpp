// Descriptions of simulated hosts, which people write.
#include "simhost/host_description.h"
#include "target.h"

void fuzz::Try(std::string_view input) {
    try {
        simhost::HostDescription::FromJson(input, "input");
    } catch (const simhost::DescriptionError& error) {
        const std::string_view message = error.what();
        Require(!message.empty() && message.find('\n') == std::string_view::npos);
    }
}
