#include "cimxml/name_cache.h"

#include "cimxml/mix.h"

namespace cimclient {

using namespace Pegasus;

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
