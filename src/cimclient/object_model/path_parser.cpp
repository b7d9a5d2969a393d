#include "object_model/path_parser.h"

#include <string>

#include "object_model/host_names.h"
#include "object_model/names.h"
#include "object_model/value_texts.h"

namespace Pegasus::kalvex::detail {

namespace {

constexpr std::string_view kPairError = "invalid key-value pair, ";

/// Walks over one path's text; what has been read is cut off at the front.
class PathParser {
public:
    explicit PathParser(std::string_view text) : whole_(text), rest_(text) {}

    CIMObjectPath Parse() {
        const String host = ReadHost();
        const CIMNamespaceName name_space = ReadNamespace();
        const CIMName class_name = ReadClassName();
        Array<CIMKeyBinding> keys;
        while (!rest_.empty()) {
            keys.append(ReadKey());
        }
        return CIMObjectPath(host, name_space, class_name, keys);
    }

private:
    [[noreturn]] void Fail(const std::string& reason) const { ThrowMalformedPath(whole_, reason); }
    [[noreturn]] void FailPair(const std::string& reason) const {
        Fail(std::string(kPairError) + reason);
    }

    std::string_view Take(std::size_t count) {
        const std::string_view taken = rest_.substr(0, count);
        rest_.remove_prefix(taken.size());
        return taken;
    }

    String ReadHost() {
        if (!rest_.starts_with("//")) {
            return {};
        }
        Take(2);
        has_host_ = true;
        const std::size_t slash = rest_.find('/');
        if (slash == std::string_view::npos) {
            Fail("missing slash after hostname");
        }
        const std::string_view host = Take(slash);
        if (!host.empty() && !IsPathHost(host)) {
            Fail("invalid hostname");
        }
        Take(1);
        return String::FromUtf8(host);
    }

    CIMNamespaceName ReadNamespace() {
        const std::size_t colon = rest_.find(':');
        if (colon == std::string_view::npos || (!has_host_ && colon > rest_.find('.'))) {
            return {};
        }
        const std::string_view name = Take(colon);
        Take(1);
        if (!IsLegalNamespace(name.substr(name.starts_with('/') ? 1 : 0))) {
            Fail("invalid namespace name");
        }
        return CIMNamespaceName(String::FromUtf8(name));
    }

    CIMName ReadClassName() {
        const std::string_view name = Take(rest_.find('.'));
        if (!IsLegalName(name)) {
            Fail("class name " + std::string(name) + " not a legal CIM name");
        }
        Take(1);
        return CIMName::Unchecked(String::FromUtf8(name));
    }

    CIMKeyBinding ReadKey() {
        const std::size_t equal_sign = rest_.find('=');
        if (equal_sign == std::string_view::npos) {
            FailPair("missing equal sign");
        }
        const std::string_view name = Take(equal_sign);
        if (!IsLegalName(name)) {
            FailPair("invalid key name:" + std::string(name));
        }
        Take(1);
        CIMKeyBinding key = ReadValue(CIMName::Unchecked(String::FromUtf8(name)));
        if (!rest_.empty() && Take(1) != ",") {
            FailPair("next key-value pair has to start with comma");
        }
        return key;
    }

    CIMKeyBinding ReadValue(const CIMName& name) {
        const char first = rest_.empty() ? '\0' : rest_[0];
        if (first == '"') {
            return ReadQuoted(name);
        }
        const std::string_view value = Take(rest_.find(','));
        if (first == 't' || first == 'T' || first == 'f' || first == 'F') {
            const auto boolean = BooleanOf(value);
            if (!boolean) {
                FailPair("value should be TRUE or FALSE");
            }
            return CIMKeyBinding(name, BooleanText(*boolean), CIMKeyBinding::BOOLEAN);
        }
        CheckNumber(value);
        return CIMKeyBinding(name, String::FromUtf8(value), CIMKeyBinding::NUMERIC);
    }

    void CheckNumber(std::string_view value) const {
        if (value.starts_with('-')) {
            if (!StrictMagnitude(value.substr(1)) || !IntegerOf<Sint64>(value)) {
                FailPair("invalid negative number value " + std::string(value));
            }
        } else if (!StrictMagnitude(value)) {
            FailPair("invalid number value " + std::string(value));
        }
    }

    CIMKeyBinding ReadQuoted(const CIMName& name) {
        std::string value;
        Take(1);
        while (true) {
            if (rest_.empty()) {
                FailPair("missing quote in key value");
            }
            const std::string_view c = Take(1);
            if (c == "\"") {
                break;
            }
            if (c != "\\") {
                value += c;
                continue;
            }
            const std::string_view escaped = Take(1);
            if (escaped != "\"" && escaped != "\\") {
                FailPair("malformed value");
            }
            value += escaped;
        }
        return AsReference(name, value);
    }

    /// A quoted text that is a path with keys is a reference.
    static CIMKeyBinding AsReference(const CIMName& name, const std::string& value) {
        try {
            const CIMObjectPath path = ParseObjectPath(value);
            if (path.getKeyBindings().size() > 0) {
                return CIMKeyBinding(name, path.toString(), CIMKeyBinding::REFERENCE);
            }
        } catch (const MalformedObjectNameException&) {
            // Plain text, then.
        }
        return CIMKeyBinding(name, String::FromUtf8(value), CIMKeyBinding::STRING);
    }

    std::string_view whole_;
    std::string_view rest_;
    bool has_host_ = false;
};

}  // namespace

CIMObjectPath ParseObjectPath(std::string_view text) { return PathParser(text).Parse(); }

void ThrowMalformedPath(std::string_view text, std::string_view reason) {
    std::string message(text);
    message.append(", reason:\"").append(reason).append("\"");
    throw MalformedObjectNameException(String::FromUtf8(message));
}

}  // namespace Pegasus::kalvex::detail
