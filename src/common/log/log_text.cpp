#include "common/log/log_text.h"

#include "common/text/visible_text.h"

namespace Zentar {

std::string SafeLogText(std::string_view text) {
    // A line break at the very end would only add an empty line.
    if (!text.empty() && text.back() == '\n') {
        text.remove_suffix(1);
    }
    std::string out;
    out.reserve(text.size());
    while (!text.empty()) {
        const TextUnit unit = FirstUnit(text);
        if (unit.code == '\n') {
            out += "\n    ";
        } else if (unit.code == '\t') {
            out += '\t';
        } else {
            AppendVisible(out, unit);
        }
        text.remove_prefix(unit.bytes.size());
    }
    return out;
}

}  // namespace Zentar
