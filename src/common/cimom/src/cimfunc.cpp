#include "common/cimom/src/cimfunc.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "common/cimom/src/client_seam.h"
#include "common/cimom/src/exception_causes.h"
#include "common/cimom/src/host_access.h"
#include "common/log/log_message.h"
#include "common/platform/secret.h"
#include "common/text/beginning.h"

namespace Zentar {

namespace {

using Pegasus::Uint32;  // PEG_NOT_FOUND names it so

enum ConnectionType : std::int32_t { kHttp = 0, kHttps = 1 };

std::string ToText(const Pegasus::String& text) { return std::string(text.getCString()); }

bool IsCimCase(std::int32_t connection_case) {
    return connection_case >= 2 && connection_case <= 4;
}

/// A host may give its classes names of any length, and each failure keeps a copy.
std::string ShortName(const std::string& name) {
    constexpr std::size_t kMostBytes = 256;
    return name.size() <= kMostBytes ? name : std::string(Beginning(name, kMostBytes)) + "\u2026";
}

/// What is asked of the host, as failures name it.
struct Asked {
    const char* operation;
    std::string class_name;
    std::string association;
    std::string source_class;

    /// For connecting because of it.
    Asked Connecting() const { return {"connect", class_name, association, source_class}; }
};

Failure About(Failure cause, const Asked& asked, const Pegasus::CIMNamespaceName& ns) {
    cause.operation = asked.operation;
    cause.class_name = asked.class_name;
    cause.association = asked.association;
    cause.source_class = asked.source_class;
    cause.name_space = ToText(ns.getString());
    return cause;
}

/// For its own sake.
const Asked kConnecting{"connect", {}, {}, {}};

/// What the action threw of the client's exceptions, in words for the log and as a cause; nothing
/// when it threw none. Others, such as a failed allocation, are the caller's.
struct Thrown {
    std::string message;
    Failure cause;
};

Thrown ThrownBy(const Pegasus::Exception& e) { return {ToText(e.getMessage()), CauseOf(e)}; }

template <class Action>
std::optional<Thrown> FailureOf(Action action) {
    try {
        action();
        return std::nullopt;
    } catch (const Pegasus::Exception& e) {
        return ThrownBy(e);
    }
}

void DestroyClient(CimConnection& conn) {
    delete conn.client;
    conn.client = nullptr;
}

/// What is wrong with the options about trust, for this connection; empty when nothing is. A client
/// that can keep them is ready to.
std::string TrustProblem(const CimConnection& conn) {
    const auto& options = conn.access->options();
    const bool is_wanted = !options.ca_file.empty() || !options.fingerprints.empty();
    if (is_wanted && conn.info.connection_type != kHttps) {
        return "A CA file or fingerprints can only be kept with HTTPS.";
    }
    if (is_wanted && !ClientTestsTrust()) {
        return "The CIM client of this build tests no host names, so that a CA file or "
               "fingerprints "
               "cannot be kept.";
    }
    const auto failure =
        FailureOf([&] { PrepareClient(*conn.client, options, conn.access->cancellation()); });
    return failure ? failure->message : std::string();
}

void NoteBadConnectionInfo(CimConnection& conn, const Asked& asked, std::string text) {
    Failure cause;
    cause.kind = FailureKind::kBadConnectionInfo;
    cause.text = std::move(text);
    conn.access->Note(About(std::move(cause), asked, conn.ns));
}

/// Nothing has been replied yet: what is wrong then and is not the host's is what was asked for.
std::optional<Thrown> FailureToConnect(CimConnection& conn,
                                       const Pegasus::SSLContext& ssl_context) {
    auto failure = FailureOf([&] {
        ConnectClient(*conn.client, conn.info,
                      conn.info.connection_type == kHttps ? &ssl_context : nullptr);
    });
    if (failure && failure->cause.kind == FailureKind::kBadReply) {
        failure->cause.kind = FailureKind::kBadConnectionInfo;
    }
    return failure;
}

int ConnectInAttempts(CimConnection& conn, const Asked& asked) {
    // No trust store and no callback: hosts come with self-signed certificates, any is accepted
    // unless the options say otherwise.
    const Pegasus::SSLContext ssl_context("", nullptr, Pegasus::String::EMPTY);
    HostAccess& access = *conn.access;
    const auto& options = access.options();
    for (unsigned attempts_left = std::max(options.connect_attempts, 1U);;) {
        conn.client->setTimeout(access.Clipped(options.connect_limit));
        const auto type = conn.info.connection_type;
        if (type != kHttp && type != kHttps) {
            ZENTAR_LOG(1) << "Invalid connection type: " << type;
            NoteBadConnectionInfo(conn, asked,
                                  "There is no connection type " + std::to_string(type) + ".");
            return kCimOk;
        }
        const auto failure = FailureToConnect(conn, ssl_context);
        if (!failure) {
            ZENTAR_LOG(3) << "Cimserver connection succeeded ";
            return kCimOk;
        }
        const bool is_last = --attempts_left == 0 || access.HasEnded();
        if (is_last) {
            ZENTAR_LOG(1) << "Failed to connect remote cimserver with the reason: "
                          << failure->message;
        }
        if (!is_last || options.pause_after_last_attempt) {
            access.Pause();
        }
        if (is_last || access.HasEnded()) {
            access.NoteUnreachable(About(failure->cause, asked, conn.ns));
            return kCimFailed;
        }
    }
}

/// Whether the host may still be asked. Otherwise that is noted as why nothing was.
bool MayAsk(CimConnection& conn, const Asked& asked, const char* log_prefix) {
    auto ending = conn.access->Ending();
    if (!ending) {
        return true;
    }
    ZENTAR_LOG(1) << log_prefix << ending->text;
    ending->was_asked = false;
    conn.access->Note(About(std::move(*ending), asked, conn.ns));
    return false;
}

int Connect(CimConnection& conn, const Asked& asked) {
    const auto& info = conn.info;
    if (info.host.empty()) {
        ZENTAR_LOG(1)
            << "Failed to connect remote cimserver due to invalid connection information. ";
        NoteBadConnectionInfo(conn, asked, "The host's name is empty.");
        return kCimFailed;
    }
    ZENTAR_LOG(3) << "Connecting to " << info.user << ":**********@" << info.host << ":"
                  << info.port;
    ZENTAR_LOG(4) << "connection case is " << info.connection_case;
    if (!IsCimCase(info.connection_case)) {
        ZENTAR_LOG(4) << "Connection case is not CIM, do not try to connect CIM server.";
        NoteBadConnectionInfo(conn, asked,
                              "The connection case " + std::to_string(info.connection_case) +
                                  " does not go through a CIM server.");
        return kCimFailed;
    }
    if (const std::string problem = TrustProblem(conn); !problem.empty()) {
        ZENTAR_LOG(1) << "Failed to connect remote cimserver with the reason: " << problem;
        NoteBadConnectionInfo(conn, asked, problem);
        return kCimFailed;
    }
    if (!MayAsk(conn, asked, "Failed to connect remote cimserver with the reason: ")) {
        return kCimFailed;
    }
    return ConnectInAttempts(conn, asked);
}

/// Connects a client that does not exist yet, and destroys it again when that fails or throws: an
/// unconnected client would never be repaired.
int ConnectNewClient(CimConnection& conn, const Asked& asked) {
    conn.client = new Pegasus::CIMClient();
    try {
        const int result = Connect(conn, asked);
        if (result != kCimOk) {
            DestroyClient(conn);
        }
        return result;
    } catch (...) {
        DestroyClient(conn);
        throw;
    }
}

int Reconnect(CimConnection& conn, const Asked& asked) {
    DestroyClient(conn);
    return ConnectNewClient(conn, asked);
}

/// Makes sure that there is a client to send a request through.
bool HasClient(CimConnection& conn, const Asked& asked) {
    if (conn.client != nullptr) {
        return true;
    }
    ZENTAR_LOG(3) << "The value of cim client is NULL,Now restart cimserver!";
    if (Reconnect(conn, asked.Connecting()) == kCimFailed) {
        return false;
    }
    ZENTAR_LOG(3) << "Restart cim server succeed,Now reconnect to cimserver!";
    if (conn.client == nullptr) {
        ZENTAR_LOG(3) << "Reconnect to cimserver failed! cimcli quit!";
        return false;
    }
    return true;
}

/// A new client after a request that failed, unless nothing is to be asked of the host any more.
void RepairClient(CimConnection& conn) {
    if (conn.access->HasEnded()) {
        DestroyClient(conn);
    } else {
        ReconnectCimServer(conn);
    }
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
    : CimConnection(ns_, info_, std::make_shared<HostAccess>()) {}

CimConnection::CimConnection(const Pegasus::CIMNamespaceName& ns_,
                             const ZentarConnection::ConnectionInfo& info_,
                             const std::shared_ptr<HostAccess>& access_)
    : CimConnection(Unconnected(), ns_, info_, access_) {
    ConnectNewClient(*this, kConnecting);
}

CimConnection::CimConnection(Unconnected, const Pegasus::CIMNamespaceName& ns_,
                             const ZentarConnection::ConnectionInfo& info_,
                             const std::shared_ptr<HostAccess>& access_)
    : ns(ns_), info(info_), access(access_) {}

CimConnection::~CimConnection() {
    DestroyClient(*this);
    Wipe(info.password);
}

int ConnectCimServer(CimConnection& conn) { return Connect(conn, kConnecting); }

int ReconnectCimServer(CimConnection& conn) { return Reconnect(conn, kConnecting); }

int GetCIMArrayFromEnumerateInstances(Pegasus::CIMName class_name, CimConnection& conn,
                                      Pegasus::Array<Pegasus::CIMInstance>& instances,
                                      Pegasus::Uint32 timeout_ms) {
    ZENTAR_LOG(3) << "Calling GetCIMArrayFromEnumerateInstances()";
    ZENTAR_LOG(3) << "The value of class name is:" << ToText(class_name.getString());
    const Pegasus::CIMNamespaceName ns = conn.ns;
    ZENTAR_LOG(3) << "The value of cim namespace is:" << ToText(ns.getString());
    static const char* const kFailure = "Enumerate instances failed with the reason: ";
    const Asked asked{"EnumerateInstances", ToText(class_name.getString()), {}, {}};
    if (!MayAsk(conn, asked, kFailure) || !HasClient(conn, asked)) {
        return kCimFailed;
    }
    const auto note = [&](const Pegasus::Exception& e) {
        Thrown thrown = ThrownBy(e);
        ZENTAR_LOG(1) << kFailure << thrown.message;
        thrown.cause.kind = KindInEnumeration(thrown.cause);
        conn.access->NoteFailedRequest(About(std::move(thrown.cause), asked, ns));
    };
    try {
        conn.client->setTimeout(conn.access->Clipped(HostAccess::Milliseconds(timeout_ms)));
        const bool deep_inheritance = true;
        const bool local_only = true;
        const bool include_qualifiers = false;
        const bool include_class_origin = false;
        instances = conn.client->enumerateInstances(ns, class_name, deep_inheritance, local_only,
                                                    include_qualifiers, include_class_origin,
                                                    Pegasus::CIMPropertyList());
        conn.access->NoteAnswer();
        ZENTAR_LOG(3) << "The size of ei_array is:" << instances.size();
        return kCimOk;
    } catch (const Pegasus::CIMException& e) {
        note(e);
        RepairClient(conn);
        return e.getCode() == Pegasus::CIM_ERR_INVALID_NAMESPACE ? kCimInvalidNamespace
                                                                 : kCimFailed;
    } catch (const Pegasus::Exception& e) {
        note(e);
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
    static const char* const kFailure = "Enumerate associators failed with the reason: ";
    const Asked asked{"Associators", ToText(result_class.getString()),
                      ToText(association_class.getString()),
                      ShortName(ToText(source.getClassName().getString()))};
    if (!MayAsk(conn, asked, kFailure) || !HasClient(conn, asked)) {
        return kCimFailed;
    }
    auto failure = FailureOf([&] {
        conn.client->setTimeout(conn.access->Clipped(conn.access->options().request_limit));
        const Pegasus::String any_role;
        // Value maps can only be read when the server sends the qualifiers.
        const bool include_qualifiers = true;
        const bool include_class_origin = false;
        objects = conn.client->associators(ns, source, association_class, result_class, any_role,
                                           any_role, include_qualifiers, include_class_origin,
                                           Pegasus::CIMPropertyList());
        conn.access->NoteAnswer();
        ZENTAR_LOG(3) << "The size of associators_array is:" << objects.size();
    });
    if (failure) {
        ZENTAR_LOG(1) << kFailure << failure->message;
        conn.access->NoteFailedRequest(About(std::move(failure->cause), asked, ns));
        RepairClient(conn);
        return kCimFailed;
    }
    return kCimOk;
}

PropertyReader::PropertyReader(PropertyMap& properties, HostAccess* access) : access_(access) {
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
        const auto failure = FailureOf([&] { ReadProperty(thing, wanted); });
        if (failure) {
            ZENTAR_LOG(1) << "Get properties from CIM " << kind
                          << " failed with the reason: " << failure->message;
            NoteUnreadable(thing.getPath(), wanted.name, failure->message);
        }
    }
}

void PropertyReader::NoteUnreadable(const Pegasus::CIMObjectPath& path, const std::string& property,
                                    const std::string& reason) const {
    if (access_ == nullptr) {
        return;
    }
    Failure failure;
    failure.kind = FailureKind::kValueUnreadable;
    failure.operation = "read property";
    failure.class_name = ShortName(ToText(path.getClassName().getString()));
    failure.text = property + ": " + reason;
    access_->Note(std::move(failure));
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

void GetPropertiesFromInstance(const Pegasus::CIMInstance& instance, PropertyMap& properties,
                               HostAccess* access) {
    PropertyReader(properties, access).Read(instance);
}

void GetPropertiesFromObject(const Pegasus::CIMObject& object, PropertyMap& properties,
                             HostAccess* access) {
    PropertyReader(properties, access).Read(object);
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
