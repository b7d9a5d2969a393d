#include "module/recorded_access.h"

#include "common/cimom/src/cimfunc.h"

namespace recorded_access {

std::vector<std::string> calls;
std::map<std::string, Answer> answers;
int default_result = 0;

void Reset() {
    calls.clear();
    answers.clear();
    default_result = 0;
}

namespace {

using Pegasus::Uint32;  // PEG_NOT_FOUND names it so

template <class Text>
std::string Narrow(const Text& text) {
    return std::string(text.getString().getCString());
}

template <class Object>
int Give(const std::string& key, Pegasus::Array<Object>& objects) {
    const auto answer = answers.find(key);
    if (answer == answers.end()) {
        return default_result;
    }
    for (const Pegasus::CIMInstance& object : answer->second.objects) {
        objects.append(Object(object));
    }
    return answer->second.result;
}

void Record(const std::string& what, const Zentar::CimConnection& connection,
            const std::string& details = {}) {
    calls.push_back(what + " " + Narrow(connection.ns) + details);
}

template <class CimThing>
void Read(const CimThing& thing, const std::string& name, std::string& text) {
    const Pegasus::Uint32 at = thing.findProperty(Pegasus::CIMName(name.c_str()));
    if (at != PEG_NOT_FOUND) {
        text = Zentar::GetPropertyValueText(thing.getProperty(at));
    }
}

}  // namespace

}  // namespace recorded_access

namespace Zentar {

using recorded_access::Give;
using recorded_access::Narrow;
using recorded_access::Record;

CimConnection::CimConnection(const Pegasus::CIMNamespaceName& ns_,
                             const ZentarConnection::ConnectionInfo& info_,
                             const std::shared_ptr<HostAccess>& access_)
    : ns(ns_), info(info_), access(access_) {
    Record("connect", *this);
}

CimConnection::~CimConnection() { Record("disconnect", *this); }

int GetCIMArrayFromEnumerateInstances(Pegasus::CIMName class_name, CimConnection& conn,
                                      Pegasus::Array<Pegasus::CIMInstance>& instances,
                                      Pegasus::Uint32 timeout_ms) {
    Record("enumerate", conn, " " + Narrow(class_name) + " " + std::to_string(timeout_ms));
    return Give(Narrow(class_name), instances);
}

int GetCIMArrayFromAssociators(Pegasus::CIMObjectPath source, Pegasus::CIMName association_class,
                               Pegasus::CIMName result_class, CimConnection& conn,
                               Pegasus::Array<Pegasus::CIMObject>& objects) {
    Record("associate", conn,
           " " + std::string(source.toString().getCString()) + " " + Narrow(association_class) +
               " " + Narrow(result_class));
    return Give(Narrow(association_class), objects);
}

void GetPropertiesFromInstance(const Pegasus::CIMInstance& instance, PropertyMap& properties,
                               HostAccess*) {
    PropertyReader(properties).Read(instance);
}

void GetPropertiesFromObject(const Pegasus::CIMObject& object, PropertyMap& properties,
                             HostAccess*) {
    PropertyReader(properties).Read(object);
}

PropertyReader::PropertyReader(PropertyMap& properties, HostAccess* access) : access_(access) {
    for (auto& [name, text] : properties) {
        wanted_.push_back({name, text, {}});
    }
}

void PropertyReader::Read(const Pegasus::CIMInstance& instance) {
    for (const Wanted& wanted : wanted_) {
        recorded_access::Read(instance, wanted.name, wanted.text);
    }
}

void PropertyReader::Read(const Pegasus::CIMObject& object) {
    for (const Wanted& wanted : wanted_) {
        recorded_access::Read(object, wanted.name, wanted.text);
    }
}

std::string GetPropertyValueText(const Pegasus::CIMConstProperty& property) {
    return std::string(property.getValue().toString().getCString());
}

}  // namespace Zentar
