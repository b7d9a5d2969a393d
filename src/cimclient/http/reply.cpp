#include "http/reply.h"

#include <openssl/crypto.h>

#include <algorithm>

#include "common/text/ascii.h"

namespace cimclient {

namespace {

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    return first == std::string_view::npos
               ? std::string_view()
               : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string_view WithoutExtensionPrefix(std::string_view name) {
    const bool prefixed =
        name.size() > 3 && Zentar::IsDigit(name[0]) && Zentar::IsDigit(name[1]) && name[2] == '-';
    return name.substr(prefixed ? 3 : 0);
}

int HexValue(char c) { return OPENSSL_hexchar2int(static_cast<unsigned char>(c)); }

}  // namespace

void HeaderFields::Add(std::string_view line) {
    const std::size_t colon = line.find(':');
    if (colon != std::string_view::npos) {  // other lines say nothing
        fields_.emplace_back(Trimmed(line.substr(0, colon)), Trimmed(line.substr(colon + 1)));
    }
}

const std::string* HeaderFields::Find(std::string_view name) const {
    for (const auto& [field, value] : fields_) {
        if (Zentar::EqualNoCase(WithoutExtensionPrefix(field), name)) {
            return &value;
        }
    }
    return nullptr;
}

std::string HeaderFields::ValueOr(std::string_view name, const char* otherwise) const {
    const std::string* value = Find(name);
    return value != nullptr ? *value : otherwise;
}

std::vector<std::string> HeaderFields::All(std::string_view name) const {
    std::vector<std::string> values;
    for (const auto& [field, value] : fields_) {
        if (Zentar::EqualNoCase(field, name)) {
            values.push_back(value);
        }
    }
    return values;
}

std::string PercentDecoded(std::string_view text) {
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool escape = text[i] == '%' && i + 2 < text.size() && HexValue(text[i + 1]) >= 0 &&
                            HexValue(text[i + 2]) >= 0;
        if (escape) {
            decoded += static_cast<char>(HexValue(text[i + 1]) * 16 + HexValue(text[i + 2]));
            i += 2;
        } else {
            decoded += text[i];
        }
    }
    return decoded;
}

}  // namespace cimclient
