#include "cimxml/text_cache.h"

#include "cimxml/mix.h"
#include "common/text/byte_words.h"

namespace cimclient {

using Pegasus::String;

namespace {

/// Longer texts hardly recur, and would be kept alive for nothing.
constexpr std::size_t kLongest = 64;

}  // namespace

String TextCache::Text(std::string_view text) {
    if (text.empty() || text.size() > kLongest) {
        return String::FromUtf8(text);
    }
    String& cached = texts_[Mix(text) % texts_.size()];
    if (!Zentar::byte_words::SameBytes(cached.utf8(), text)) {
        cached = String::FromUtf8(text);
    }
    return cached;
}

}  // namespace cimclient
