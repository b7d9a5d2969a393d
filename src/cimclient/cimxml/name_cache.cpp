#include "cimxml/name_cache.h"

#include "cimxml/mix.h"
#include "common/text/byte_words.h"
#include "object_model/names.h"

namespace cimclient {

using namespace Pegasus;

CIMName NameCache::Name(std::string_view text) {
    if (text.empty()) {
        return {};
    }
    CIMName& cached = names_[Mix(text) % names_.size()];
    if (!Zentar::byte_words::SameBytes(cached.getString().utf8(), text)) {
        if (!Pegasus::detail::IsLegalName(text)) {
            return {};
        }
        cached = CIMName::Unchecked(String::FromUtf8(text));
    }
    return cached;
}

}  // namespace cimclient
