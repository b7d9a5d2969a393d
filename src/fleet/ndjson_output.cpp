#include "fleet/ndjson_output.h"

#include <unistd.h>

#include <cerrno>
#include <sstream>
#include <string_view>
#include <system_error>

#include "outputs/json/json_output.h"

namespace fleet {

namespace {

/// Nothing when all was written.
std::string WriteAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = write(descriptor, text.data(), text.size());
        if (count >= 0) {
            text.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            return std::system_category().message(errno);
        }
    }
    return {};
}

}  // namespace

NdjsonOutput::NdjsonOutput(int descriptor, std::function<void(const std::string&)> failed)
    : descriptor_(descriptor), failed_(std::move(failed)) {}

void NdjsonOutput::Take(const HostEntry& /*entry*/, const inventory::Document& document) {
    if (has_failed_) {
        return;
    }
    std::ostringstream line;
    outputs::WriteJson(document, line, outputs::JsonLayout::kOneLine);
    line << '\n';
    const std::string problem = WriteAll(descriptor_, line.view());
    if (!problem.empty()) {
        has_failed_ = true;
        failed_(problem);
    }
}

}  // namespace fleet
