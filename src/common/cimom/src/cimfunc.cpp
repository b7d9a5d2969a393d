#include "common/cimom/src/cimfunc.h"

#include <optional>

#include "common/log/log_message.h"
#include "common/platform/sleep.h"
#include "common/platform/wipe.h"

namespace Zentar {

namespace {

constexpr Pegasus::Uint32 kConnectTimeoutMs = 2400000;
constexpr Pegasus::Uint32 kAssociatorsTimeoutMs = 300000;
constexpr int kConnectAttempts = 3;
constexpr std::uint32_t kConnectPauseMs = 10000;

enum ConnectionType : std::int32_t { kHttp = 0, kHttps = 1 };

Pegasus::String ToCimString(const std::string& text) { return Pegasus::String(text.c_str()); }

std::string ToText(const Pegasus::String& text) { return std::string(text.getCString()); }

bool IsCimCase(std::int32_t connection_case) {
    return connection_case >= 2 && connection_case <= 4;
}

/// What the action threw of the client's exceptions, in words; nothing when it threw none. Others,
/// such as a failed allocation, are the caller's.
template <class Action>
std::optional<std::string> FailureOf(Action action) {
    try {
        action();
        return std::nullopt;
    } catch (const Pegasus::Exception& e) {
        return ToText(e.getMessage());
    }
}

void DestroyClient(CimConnection& conn) {
    delete conn.client;
    conn.client = nullptr;
}

/// Connects a client that does not exist yet, and destroys it again when that fails or throws: an
/// unconnected client would never be repaired.
int ConnectNewClient(CimConnection& conn) {
    conn.client = new Pegasus::CIMClient();
    try {
        const int result = ConnectCimServer(conn);
        if (result != kCimOk) {
            DestroyClient(conn);
        }
        return result;
    } catch (...) {
        DestroyClient(conn);
        throw;
    }
}

/// A password on its way to the client, overwritten behind it.
class PasswordText {
public:
    explicit PasswordText(const std::string& password) {
        try {
            text_ = ToCimString(password);
        } catch (const Pegasus::Exception&) {
            // Its message repeats the text, and is going to be logged.
            throw Pegasus::Exception("The password is not valid UTF-8.");
        }
    }
    ~PasswordText() {
        for (Pegasus::Uint32 i = 0; i < text_.size(); ++i) {
            text_[i] = Pegasus::Char16();
        }
    }
    PasswordText(const PasswordText&) = delete;
    PasswordText& operator=(const PasswordText&) = delete;

    const Pegasus::String& text() const { return text_; }

private:
    Pegasus::String text_;
};

void ConnectOnce(CimConnection& conn, const Pegasus::SSLContext& ssl_context) {
    const auto& info = conn.info;
    const Pegasus::String host = ToCimString(info.host);
    const Pegasus::String user = ToCimString(info.user);
    const PasswordText password(info.password);
    if (info.connection_type == kHttp) {
        conn.client->connect(host, info.port, user, password.text());
    } else {
        conn.client->connect(host, info.port, ssl_context, user, password.text());
    }
}

int ConnectInAttempts(CimConnection& conn) {
    // No trust store and no callback: hosts come with self-signed certificates, any is accepted.
    const Pegasus::SSLContext ssl_context("", nullptr, Pegasus::String::EMPTY);
    for (int attempts_left = kConnectAttempts; attempts_left > 0;) {
        conn.client->setTimeout(kConnectTimeoutMs);
        const auto type = conn.info.connection_type;
        if (type != kHttp && type != kHttps) {
            ZENTAR_LOG(1) << "Invalid connection type: " << type;
            return kCimOk;
        }
        const auto failure = FailureOf([&] { ConnectOnce(conn, ssl_context); });
        if (!failure) {
            ZENTAR_LOG(3) << "Cimserver connection succeeded ";
            return kCimOk;
        }
        if (--attempts_left == 0) {
            ZENTAR_LOG(1) << "Failed to connect remote cimserver with the reason: " << *failure;
        }
        Sleep(kConnectPauseMs);
    }
    return kCimFailed;
}

/// Makes sure that there is a client to send a request through.
bool HasClient(CimConnection& conn) {
    if (conn.client != nullptr) {
        return true;
    }
    ZENTAR_LOG(3) << "The value of cim client is NULL,Now restart cimserver!";
    if (ReconnectCimServer(conn) == kCimFailed) {
        return false;
    }
    ZENTAR_LOG(3) << "Restart cim server succeed,Now reconnect to cimserver!";
    if (conn.client == nullptr) {
        ZENTAR_LOG(3) << "Reconnect to cimserver failed! cimcli quit!";
        return false;
    }
    return true;
}

Pegasus::Array<Pegasus::String> StringsOf(const Pegasus::CIMConstQualifier& qualifier) {
    Pegasus::Array<Pegasus::String> strings;
    qualifier.getValue().get(strings);
    return strings;
}

/// The word that the Values qualifier gives for the value's place in the ValueMap qualifier.
std::string MappedWord(const std::string& value, const Pegasus::CIMConstQualifier& value_map,
                       const Pegasus::CIMConstQualifier& values) {
    if (!value_map.isArray() || !values.isArray()) {
        return {};
    }
    const Pegasus::Array<Pegasus::String> keys = StringsOf(value_map);
    for (Pegasus::Uint32 i = 0; i < keys.size(); ++i) {
        const std::string key = ToText(keys[i]);
        ZENTAR_LOG(4) << "_" << key << "-" << value << "_";
        if (key == value) {
            const Pegasus::Array<Pegasus::String> words = StringsOf(values);
            return ToText(words[i]);
        }
    }
    return {};
}

}  // namespace

CimConnection::CimConnection(const Pegasus::CIMNamespaceName& ns_,
                             const ZentarConnection::ConnectionInfo& info_)
    : CimConnection(Unconnected(), ns_, info_) {
    ConnectNewClient(*this);
}

CimConnection::CimConnection(Unconnected, const Pegasus::CIMNamespaceName& ns_,
                             const ZentarConnection::ConnectionInfo& info_)
    : ns(ns_), info(info_) {}

CimConnection::~CimConnection() {
    DestroyClient(*this);
    Wipe(info.password);
}

int ConnectCimServer(CimConnection& conn) {
    const auto& info = conn.info;
    if (info.host.empty()) {
        ZENTAR_LOG(1)
            << "Failed to connect remote cimserver due to invalid connection information. ";
        return kCimFailed;
    }
    ZENTAR_LOG(3) << "Connecting to " << info.user << ":**********@" << info.host << ":"
                  << info.port;
    ZENTAR_LOG(4) << "connection case is " << info.connection_case;
    if (!IsCimCase(info.connection_case)) {
        ZENTAR_LOG(4) << "Connection case is not CIM, do not try to connect CIM server.";
        return kCimFailed;
    }
    return ConnectInAttempts(conn);
}

int ReconnectCimServer(CimConnection& conn) {
    DestroyClient(conn);
    return ConnectNewClient(conn);
}

int GetCIMArrayFromEnumerateInstances(Pegasus::CIMName class_name, CimConnection& conn,
                                      Pegasus::Array<Pegasus::CIMInstance>& instances,
                                      Pegasus::Uint32 timeout_ms) {
    ZENTAR_LOG(3) << "Calling GetCIMArrayFromEnumerateInstances()";
    ZENTAR_LOG(3) << "The value of class name is:" << ToText(class_name.getString());
    const Pegasus::CIMNamespaceName ns = conn.ns;
    ZENTAR_LOG(3) << "The value of cim namespace is:" << ToText(ns.getString());
    if (!HasClient(conn)) {
        return kCimFailed;
    }
    static const char* const kFailure = "Enumerate instances failed with the reason: ";
    try {
        conn.client->setTimeout(timeout_ms);
        const bool deep_inheritance = true;
        const bool local_only = true;
        const bool include_qualifiers = false;
        const bool include_class_origin = false;
        instances = conn.client->enumerateInstances(ns, class_name, deep_inheritance, local_only,
                                                    include_qualifiers, include_class_origin,
                                                    Pegasus::CIMPropertyList());
        ZENTAR_LOG(3) << "The size of ei_array is:" << instances.size();
        return kCimOk;
    } catch (const Pegasus::CIMException& e) {
        ZENTAR_LOG(1) << kFailure << ToText(e.getMessage());
        ReconnectCimServer(conn);
        return e.getCode() == Pegasus::CIM_ERR_INVALID_NAMESPACE ? kCimInvalidNamespace
                                                                 : kCimFailed;
    } catch (const Pegasus::Exception& e) {
        ZENTAR_LOG(1) << kFailure << ToText(e.getMessage());
        return kCimFailed;
    }
}

int GetCIMArrayFromAssociators(Pegasus::CIMObjectPath source, Pegasus::CIMName association_class,
                               Pegasus::CIMName result_class, CimConnection& conn,
                               Pegasus::Array<Pegasus::CIMObject>& objects) {
    ZENTAR_LOG(3) << "Calling GetCIMArrayFromAssociators()";
    ZENTAR_LOG(3) << "The value of source class name is:" << ToText(source.toString()) << '\n'
                  << "The value of association class name is:"
                  << ToText(association_class.getString()) << '\n'
                  << "The value of result class name is:" << ToText(result_class.getString())
                  << '\n';
    const Pegasus::CIMNamespaceName ns = conn.ns;
    ZENTAR_LOG(3) << "The value of cim namespace is:" << ToText(ns.getString());
    if (!HasClient(conn)) {
        return kCimFailed;
    }
    const auto failure = FailureOf([&] {
        conn.client->setTimeout(kAssociatorsTimeoutMs);
        const Pegasus::String any_role;
        // Value maps can only be read when the server sends the qualifiers.
        const bool include_qualifiers = true;
        const bool include_class_origin = false;
        objects = conn.client->associators(ns, source, association_class, result_class, any_role,
                                           any_role, include_qualifiers, include_class_origin,
                                           Pegasus::CIMPropertyList());
        ZENTAR_LOG(3) << "The size of associators_array is:" << objects.size();
    });
    if (failure) {
        ZENTAR_LOG(1) << "Enumerate associators failed with the reason: " << *failure;
        ReconnectCimServer(conn);
        return kCimFailed;
    }
    return kCimOk;
}

PropertyReader::PropertyReader(PropertyMap& properties) {
    wanted_.reserve(properties.size());
    for (auto& [name, text] : properties) {
        wanted_.push_back({name, text, {}});
    }
}

void PropertyReader::Read(const Pegasus::CIMInstance& instance) { ReadAll(instance, "instance"); }

void PropertyReader::Read(const Pegasus::CIMObject& object) { ReadAll(object, "object"); }

template <class CimThing>
void PropertyReader::ReadAll(const CimThing& thing, const char* kind) {
    ZENTAR_LOG(4) << "Showing properties for " << ToText(thing.getPath().toString());
    for (Wanted& wanted : wanted_) {
        if (const auto failure = FailureOf([&] { ReadProperty(thing, wanted); })) {
            ZENTAR_LOG(1) << "Get properties from CIM " << kind
                          << " failed with the reason: " << *failure;
        }
    }
}

template <class CimThing>
void PropertyReader::ReadProperty(const CimThing& thing, Wanted& wanted) {
    const Pegasus::Uint32 position = Find(thing, wanted);
    if (position == PEG_NOT_FOUND) {
        ZENTAR_LOG(2) << "Property " << wanted.name << " is not found!";
        return;
    }
    const Pegasus::CIMConstProperty property = thing.getProperty(position);
    wanted.text = GetPropertyValueText(property);
    ZENTAR_LOG(4) << wanted.name << " = " << wanted.text << " with raw data ("
                  << ToText(property.getValue().toString()) << ")";
}

template <class CimThing>
Pegasus::Uint32 PropertyReader::Find(const CimThing& thing, Wanted& wanted) {
    if (wanted.cim_name.isNull()) {
        wanted.cim_name = Pegasus::CIMName(wanted.name.c_str());
    }
    const bool is_there = wanted.last_position < thing.getPropertyCount() &&
                          thing.getProperty(wanted.last_position).getName() == wanted.cim_name;
    const Pegasus::Uint32 position =
        is_there ? wanted.last_position : thing.findProperty(wanted.cim_name);
    if (position != PEG_NOT_FOUND) {
        wanted.last_position = position;
    }
    return position;
}

void GetPropertiesFromInstance(const Pegasus::CIMInstance& instance, PropertyMap& properties) {
    PropertyReader(properties).Read(instance);
}

void GetPropertiesFromObject(const Pegasus::CIMObject& object, PropertyMap& properties) {
    PropertyReader(properties).Read(object);
}

std::string GetPropertyValueText(const Pegasus::CIMConstProperty& property) {
    // Made once: their syntax is tested when they are made, and every property is asked for them.
    static const Pegasus::CIMName values_name("Values");
    static const Pegasus::CIMName value_map_name("ValueMap");
    const Pegasus::Uint32 values = property.findQualifier(values_name);
    const Pegasus::Uint32 value_map = property.findQualifier(value_map_name);
    const auto value_text = [&] { return Trim(ToText(property.getValue().toString())); };
    if (values == PEG_NOT_FOUND || value_map == PEG_NOT_FOUND) {
        return value_text();
    }
    ZENTAR_LOG(4) << " processing value maps ...";
    return MappedWord(value_text(), property.getQualifier(value_map),
                      property.getQualifier(values));
}

std::string Trim(std::string text) {
    static const char* const kWhitespace = " \f\n\t\r\v";
    text.erase(text.find_last_not_of(kWhitespace) + 1);
    text.erase(0, text.find_first_not_of(kWhitespace));
    return text;
}

}  // namespace Zentar
