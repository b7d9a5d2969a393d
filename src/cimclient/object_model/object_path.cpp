#include <algorithm>
#include <utility>

#include "Pegasus/Common/CIMObjectPath.h"
#include "common/text/ascii.h"
#include "object_model/host_names.h"
#include "object_model/path_parser.h"
#include "object_model/text_sink.h"

namespace Pegasus::kalvex {

namespace {

bool ComesBefore(const CIMKeyBinding& x, const CIMKeyBinding& y) {
    return Zentar::CompareNoCase(x.getName().getString().utf8(), y.getName().getString().utf8()) <
           0;
}

Array<CIMKeyBinding> SortedByName(Array<CIMKeyBinding> keys) {
    const CIMKeyBinding* const first = keys.size() > 0 ? &std::as_const(keys)[0] : nullptr;
    if (!std::is_sorted(first, first + keys.size(), ComesBefore)) {
        std::stable_sort(&keys[0], &keys[0] + keys.size(), ComesBefore);
    }
    return keys;
}

const String& CheckedHost(const String& host) {
    if (!host.utf8().empty() && !detail::IsPathHost(host.utf8())) {
        detail::ThrowMalformedPath(host.utf8(), "invalid hostname");
    }
    return host;
}

void AppendQuoted(detail::TextSink& out, std::string_view text) {
    out.Append("\"");
    std::size_t special = 0;
    while ((special = text.find_first_of("\"\\")) != std::string_view::npos) {
        out.Append(text.substr(0, special));
        out.Append("\\");
        out.Append(text.substr(special, 1));
        text.remove_prefix(special + 1);
    }
    out.Append(text);
    out.Append("\"");
}

}  // namespace

CIMObjectPath::CIMObjectPath(const String& objectName)
    : CIMObjectPath(detail::ParseObjectPath(objectName.utf8())) {}

CIMObjectPath::CIMObjectPath(const String& host, const CIMNamespaceName& nameSpace,
                             const CIMName& className, const Array<CIMKeyBinding>& keyBindings)
    : host_(CheckedHost(host)),
      name_space_(nameSpace),
      class_name_(className),
      keys_(SortedByName(keyBindings)) {}

String CIMObjectPath::toString() const {
    return detail::MakeText([this](detail::TextSink& out) {
        const std::string_view host = host_.utf8();
        const std::string_view name_space = name_space_.getString().utf8();
        if (!host.empty()) {
            out.Append("//");
            out.Append(host);
            out.Append("/");
        }
        out.Append(name_space);
        if (!host.empty() || !name_space.empty()) {
            out.Append(":");
        }
        out.Append(class_name_.getString().utf8());
        for (Uint32 i = 0; i < keys_.size(); ++i) {
            const CIMKeyBinding& key = keys_[i];
            out.Append(i == 0 ? "." : ",");
            out.Append(key.getName().getString().utf8());
            out.Append("=");
            if (key.getType() == CIMKeyBinding::STRING ||
                key.getType() == CIMKeyBinding::REFERENCE) {
                AppendQuoted(out, key.getValue().utf8());
            } else {
                out.Append(key.getValue().utf8());
            }
        }
    });
}

}  // namespace Pegasus::kalvex
