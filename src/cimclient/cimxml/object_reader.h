// Instances, classes and paths from their elements (DSP0201).
//
// A single bad value, qualifier or property, and elements that are not known, are passed over: a
// host with one odd instance must still be readable. What makes an object's identity (class names,
// paths) must be right, or CIMClientXmlException or CIMClientResponseException is thrown.
#pragma once

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "Pegasus/Common/CIMInstance.h"
#include "Pegasus/Common/CIMObject.h"
#include "xml/xml_reader.h"

namespace cimclient {

class ObjectReader {
public:
    /// The reader must outlive this object.
    explicit ObjectReader(XmlReader& xml) : xml_(xml) {}

    /// VALUE.NAMEDINSTANCE; its path has neither host nor namespace.
    Pegasus::CIMInstance ReadNamedInstance();
    /// VALUE.OBJECTWITHPATH
    Pegasus::CIMObject ReadObjectWithPath();
    /// INSTANCE
    Pegasus::CIMInstance ReadInstance();
    /// CLASS
    Pegasus::CIMObject ReadClass();

private:
    struct PropertyElement;

    Pegasus::CIMObjectPath ReadInstanceName();
    Pegasus::CIMKeyBinding ReadKeyBinding();
    Pegasus::CIMKeyBinding ReadKeyValue(const Pegasus::CIMName& name);
    Pegasus::CIMObjectPath ReadReference();
    Pegasus::CIMObjectPath ReadFullPath();
    Pegasus::CIMObjectPath ReadClassName();
    Pegasus::CIMNamespaceName ReadLocalNamespacePath();
    Pegasus::String ReadHost();

    void ReadQualifier(std::vector<Pegasus::CIMQualifier>& qualifiers);
    void ReadProperty(std::vector<Pegasus::CIMProperty>& properties);
    void ReadPropertyContent(PropertyElement& element);
    std::optional<std::string> ReadValueText();
    std::vector<std::optional<std::string>> ReadValueArray();

    std::string Attribute(const char* attribute);
    bool Flag(const char* attribute, bool default_value);
    /// The class that an attribute names; throws when it is missing or no name.
    Pegasus::CIMName ClassAttribute(const char* element, const char* attribute);
    /// Names recur in every instance; each is made once. Null for an illegal one.
    Pegasus::CIMName Name(const std::string& name);

    XmlReader& xml_;
    std::unordered_map<std::string, Pegasus::CIMName> names_;
};

}  // namespace cimclient
