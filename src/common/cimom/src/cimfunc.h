// Access to a host's CIM server: connections, requests, and properties as text.
//
// No Pegasus::Exception leaves these functions: each is logged and becomes a result code. All other
// exceptions, such as std::bad_alloc, pass to the caller; the connection stays usable, results are
// untouched, and of properties those read before keep their new text. Nothing here is safe for use
// from two threads at once on the same connection.
#pragma once

#include <Pegasus/Client/CIMClient.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "common/records/connection_info.h"

namespace Zentar {

class HostAccess;

/// One CIM namespace of one host, and the client that talks to it.
struct CimConnection {
    /// Connects at once, as ConnectCimServer does; `client` is null when that fails. What `access`
    /// holds is shared with the other connections to the host; without it, it is the default.
    CimConnection(const Pegasus::CIMNamespaceName& ns,
                  const ZentarConnection::ConnectionInfo& info);
    CimConnection(const Pegasus::CIMNamespaceName& ns, const ZentarConnection::ConnectionInfo& info,
                  const std::shared_ptr<HostAccess>& access);
    ~CimConnection();
    CimConnection(const CimConnection&) = delete;
    CimConnection& operator=(const CimConnection&) = delete;

    Pegasus::CIMNamespaceName ns;
    Pegasus::CIMClient* client = nullptr;  ///< owned; null while there is no connected client
    ZentarConnection::ConnectionInfo info;
    std::shared_ptr<HostAccess> access;  ///< never null

private:
    /// Makes the whole object first, so that the destructor cleans up when connecting throws.
    struct Unconnected {};
    CimConnection(Unconnected, const Pegasus::CIMNamespaceName& ns,
                  const ZentarConnection::ConnectionInfo& info,
                  const std::shared_ptr<HostAccess>& access);
};

/// Results of the functions below.
enum CimResult : int {
    kCimOk = 0,
    kCimFailed = 1,
    kCimInvalidNamespace = 6,  ///< the server lacks the namespace (CIM_ERR_INVALID_NAMESPACE)
};

/// Wanted properties by name; the readers overwrite the texts and leave the keys alone.
using PropertyMap = std::map<std::string, std::string>;

/// Connects `conn.client`, which must exist, in at most three attempts with a pause of 10 seconds
/// after each failed one, or as the options of its access say. Returns kCimOk or kCimFailed. An
/// invalid `connection_type` is kCimOk without a connection: the first request then fails.
int ConnectCimServer(CimConnection& conn);

/// Replaces the client by a newly connected one; it is null when that fails.
int ReconnectCimServer(CimConnection& conn);

/// Reads all instances of a class and its subclasses, without qualifiers. `timeout_ms` bounds the
/// exchange, and so does the deadline. `instances` is replaced on success and untouched on failure.
int GetCIMArrayFromEnumerateInstances(Pegasus::CIMName class_name, CimConnection& conn,
                                      Pegasus::Array<Pegasus::CIMInstance>& instances,
                                      Pegasus::Uint32 timeout_ms);

/// Reads the objects of `result_class` that `association_class` associates with `source`, with
/// qualifiers, within the request limit of the options. `objects` is replaced on success and
/// untouched on failure.
int GetCIMArrayFromAssociators(Pegasus::CIMObjectPath source, Pegasus::CIMName association_class,
                               Pegasus::CIMName result_class, CimConnection& conn,
                               Pegasus::Array<Pegasus::CIMObject>& objects);

/// Fills the map's texts from the properties of the same names. A property that is missing or
/// cannot be read is logged and leaves its text as it was; with `access` one that cannot be read is
/// noted there too.
void GetPropertiesFromInstance(const Pegasus::CIMInstance& instance, PropertyMap& properties,
                               HostAccess* access = nullptr);
void GetPropertiesFromObject(const Pegasus::CIMObject& object, PropertyMap& properties,
                             HostAccess* access = nullptr);

/// The same for many instances of one class: names are made once, and each property is looked for
/// where the instance before had it. The map and the access must outlive the reader, and the keys
/// must stay.
class PropertyReader {
public:
    explicit PropertyReader(PropertyMap& properties, HostAccess* access = nullptr);
    void Read(const Pegasus::CIMInstance& instance);
    void Read(const Pegasus::CIMObject& object);

private:
    struct Wanted {
        const std::string& name;
        std::string& text;
        Pegasus::CIMName cim_name;  ///< made when the property is first looked for
        Pegasus::Uint32 last_position = 0;
    };
    template <class CimThing>
    static Pegasus::Uint32 Find(const CimThing& thing, Wanted& wanted);
    template <class CimThing>
    static void ReadProperty(const CimThing& thing, Wanted& wanted);
    template <class CimThing>
    void ReadAll(const CimThing& thing, const char* kind);
    void NoteUnreadable(const Pegasus::CIMObjectPath& path, const std::string& property,
                        const std::string& reason) const;

    std::vector<Wanted> wanted_;
    HostAccess* access_;
};

/// The property's value as trimmed text; with both a ValueMap and a Values qualifier (DSP0004) the
/// word for the value, or empty text when the value is not in the map. May throw.
std::string GetPropertyValueText(const Pegasus::CIMConstProperty& property);

/// `text` without the blanks, tabs and line breaks at its ends.
std::string Trim(std::string text);

}  // namespace Zentar
