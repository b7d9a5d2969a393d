// Instances, classes and paths from their elements (DSP0201).
//
// A single bad value, qualifier or property, and elements that are not known, are passed over: a
// host with one odd instance must still be readable. What makes an object's identity (class names,
// paths) must be right, or XmlError or ResponseError is thrown.
#pragma once

#include <optional>
#include <string_view>

#include "Pegasus/Common/CIMInstance.h"
#include "Pegasus/Common/CIMObject.h"
#include "cimxml/text_cache.h"
#include "cimxml/value_reader.h"
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
    /// INSTANCE, with the path that came before it, if any.
    Pegasus::CIMInstance ReadInstance(const Pegasus::CIMObjectPath* path = nullptr);
    /// CLASS, the same.
    Pegasus::CIMObject ReadClass(const Pegasus::CIMObjectPath* path = nullptr);

private:
    struct PropertyElement;

    Pegasus::CIMObjectPath ReadInstanceName();
    Pegasus::CIMKeyBinding ReadKeyBinding();
    Pegasus::CIMKeyBinding ReadKeyValue(const Pegasus::CIMName& name);
    Pegasus::CIMObjectPath ReadReference();
    Pegasus::CIMKeyBinding ReadReferenceKey(const Pegasus::CIMName& name);
    Pegasus::CIMObjectPath ReadFullPath();
    Pegasus::CIMObjectPath ReadClassName();
    Pegasus::CIMNamespaceName ReadLocalNamespacePath();
    Pegasus::String ReadHost();

    void ReadQualifier(Pegasus::detail::ArenaVector<Pegasus::CIMQualifier>& qualifiers);
    void ReadProperty();
    PropertyElement ReadPropertyHead();
    void ReadPropertyContent(PropertyElement& element);
    ValueText ReadValueText();
    void ReadValueArray(ValueTexts& texts);

    /// Empty when it is missing. Valid until another one is asked for.
    std::string_view Attribute(const char* attribute);
    /// The class that an attribute names; throws when it is missing or no name.
    Pegasus::CIMName ClassAttribute(const char* element, const char* attribute);
    XmlReader& xml_;
    int reference_depth_ = 0;
    NameCache names_;
    TextCache texts_;
    // Kept from instance to instance for their memory.
    Pegasus::detail::ArenaVector<Pegasus::CIMProperty> properties_;
    Pegasus::detail::ArenaVector<Pegasus::CIMQualifier> qualifiers_;
    Pegasus::detail::ArenaVector<Pegasus::CIMQualifier> property_qualifiers_;
    ValueTexts element_texts_;
    ValueTexts qualifier_texts_;
};

/// The object of an INSTANCE or CLASS element; nothing when the text is something else.
std::optional<Pegasus::CIMObject> ReadEmbeddedObject(std::string_view text);

}  // namespace cimclient
