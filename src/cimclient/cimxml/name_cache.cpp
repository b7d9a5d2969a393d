#include "cimxml/name_cache.h"

namespace cimclient {

using namespace Pegasus;

namespace {

/// Tells the names of one class apart, for which their lengths and a few letters are enough.
std::size_t Mix(std::string_view text) {
    const auto letter = [text](std::size_t at) {
        return static_cast<std::size_t>(static_cast<unsigned char>(text[at]));
    };
    return text.size() * 7 + letter(0) * 3 + letter(text.size() / 2) * 5 + letter(text.size() - 1);
}

}  // namespace

CIMName NameCache::Name(std::string_view text) {
    if (text.empty()) {
        return {};
    }
    CIMName& cached = names_[Mix(text) % names_.size()];
    if (cached.getString().utf8() != text) {
        const String name = String::FromUtf8(text);
        if (!CIMName::legal(name)) {
            return {};
        }
        cached = CIMName::Unchecked(name);
    }
    return cached;
}

}  // namespace cimclient
