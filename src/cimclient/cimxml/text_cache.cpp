#include "cimxml/text_cache.h"

#include "common/text/byte_words.h"
#include "object_model/names.h"

namespace cimclient {

using Pegasus::CIMName;
using Pegasus::String;

namespace {

/// Longer texts hardly recur, and would be kept alive for nothing.
constexpr std::size_t kLongest = 64;

/// Of a text that is not empty. Its length and a few letters are enough for the texts of one reply.
std::size_t Hash(std::string_view text) {
    const auto letter = [text](std::size_t at) {
        return static_cast<std::size_t>(static_cast<unsigned char>(text[at]));
    };
    return text.size() * 7 + letter(0) * 3 + letter(text.size() / 2) * 5 + letter(text.size() - 1);
}

}  // namespace

String TextCache::Text(std::string_view text) {
    if (text.empty() || text.size() > kLongest) {
        return String::FromUtf8(text);
    }
    String& cached = texts_[Hash(text) % texts_.size()];
    if (!Zentar::byte_words::SameBytes(cached.utf8(), text)) {
        cached = String::FromUtf8(text);
    }
    return cached;
}

CIMName NameCache::Name(std::string_view text) {
    if (text.empty()) {
        return {};
    }
    CIMName& cached = names_[Hash(text) % names_.size()];
    if (!Zentar::byte_words::SameBytes(cached.getString().utf8(), text)) {
        if (!Pegasus::detail::IsLegalName(text)) {
            return {};
        }
        cached = CIMName::Unchecked(String::FromUtf8(text));
    }
    return cached;
}

}  // namespace cimclient
