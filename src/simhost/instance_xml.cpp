#include "simhost/instance_xml.h"

#include <algorithm>

#include "simhost/text.h"

namespace simhost {

namespace {

void AppendInstanceName(const ObjectPath& path, std::string& xml) {
    xml += "<INSTANCENAME CLASSNAME=\"" + path.class_name + "\">\n";
    for (const KeyBinding& key : path.keys) {
        xml += "<KEYBINDING NAME=\"" + key.name + "\">\n<KEYVALUE VALUETYPE=\"" + key.value_type +
               "\">" + XmlText(key.value) + "</KEYVALUE>\n</KEYBINDING>\n";
    }
    xml += "</INSTANCENAME>\n";
}

bool Wanted(const Property& property, const InstanceFormat& format) {
    if (format.only_class != nullptr && format.only_class->FindProperty(property.name) == nullptr) {
        return false;
    }
    return format.property_list == nullptr ||
           std::any_of(
               format.property_list->begin(), format.property_list->end(),
               [&](const std::string& name) { return EqualIgnoringCase(name, property.name); });
}

void AppendProperty(const PropertyValue& value, const std::string& class_name,
                    const InstanceFormat& format, std::string& xml) {
    const Property& property = *value.property;
    const char* element = property.array ? "PROPERTY.ARRAY" : "PROPERTY";
    xml.append("<").append(element).append(" NAME=\"").append(property.name).append("\" ");
    if (format.class_origin) {
        xml.append(" CLASSORIGIN=\"").append(property.origin).append("\"");
    }
    // A provider that sets no value leaves the one that the class inherits.
    if (value.xml.empty() && property.origin != class_name) {
        xml += " PROPAGATED=\"true\"";
    }
    xml.append(" TYPE=\"").append(property.type).append("\">\n");
    if (format.qualifiers) {
        xml += property.qualifiers_xml;
    }
    xml.append(value.xml).append("</").append(element).append(">\n");
}

void AppendInstance(const Instance& instance, const InstanceFormat& format, std::string& xml) {
    const std::string& class_name = instance.of_class->name;
    xml += "<INSTANCE CLASSNAME=\"" + class_name + "\" >\n";
    for (const PropertyValue& value : instance.values) {
        if (Wanted(*value.property, format)) {
            AppendProperty(value, class_name, format, xml);
        }
    }
    xml += "</INSTANCE>\n";
}

void AppendNamespaces(std::string_view name, std::string& xml) {
    for (;;) {
        const auto slash = name.find('/');
        xml += "<NAMESPACE NAME=\"" + XmlText(name.substr(0, slash)) + "\"/>\n";
        if (slash == std::string_view::npos) {
            return;
        }
        name.remove_prefix(slash + 1);
    }
}

}  // namespace

void AppendNamedInstance(const Instance& instance, const InstanceFormat& format, std::string& xml) {
    xml += "<VALUE.NAMEDINSTANCE>\n";
    AppendInstanceName(instance.path, xml);
    AppendInstance(instance, format, xml);
    xml += "</VALUE.NAMEDINSTANCE>\n";
}

void AppendObjectWithPath(const Instance& instance, const std::string& host,
                          const std::string& name_space, const InstanceFormat& format,
                          std::string& xml) {
    xml += "<VALUE.OBJECTWITHPATH>\n<INSTANCEPATH>\n<NAMESPACEPATH>\n<HOST>" + XmlText(host) +
           "</HOST>\n<LOCALNAMESPACEPATH>\n";
    AppendNamespaces(name_space, xml);
    xml += "</LOCALNAMESPACEPATH>\n</NAMESPACEPATH>\n";
    AppendInstanceName(instance.path, xml);
    xml += "</INSTANCEPATH>\n";
    AppendInstance(instance, format, xml);
    xml += "</VALUE.OBJECTWITHPATH>\n";
}

}  // namespace simhost
