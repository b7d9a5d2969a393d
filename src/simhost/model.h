// A simulated host in memory, ready to be written as XML.
#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace simhost {

/// A property as its class declares it.
struct Property {
    std::string name;
    std::string type;  ///< the CIM type's name, such as "uint16"
    bool array = false;
    std::string origin;          ///< the class that declares it
    std::string qualifiers_xml;  ///< QUALIFIER elements, possibly none
};

/// A property of an instance. Without XML it has no value.
struct PropertyValue {
    const Property* property = nullptr;
    std::string xml;  ///< a VALUE or VALUE.ARRAY element, or whatever the description says
};

struct KeyBinding {
    std::string name;
    std::string value_type;  ///< "string", "numeric" or "boolean"
    std::string value;
};

/// An object path without host and namespace. The keys are sorted by name.
struct ObjectPath {
    std::string class_name;
    std::vector<KeyBinding> keys;

    /// Such as `Class.A="text",B=5`.
    std::string Text() const;
    /// The same object: names in any case, values as they are, however they are quoted.
    bool Denotes(const ObjectPath& other) const;
};

struct Class;

struct Instance {
    const Class* of_class = nullptr;
    ObjectPath path;
    std::vector<PropertyValue> values;  ///< in the class's order; absent ones are not here
};

struct Class {
    std::string name;
    std::string superclass;  ///< may name a class that is not described
    std::vector<std::string> keys;
    std::deque<Property> properties;  ///< inherited ones first
    std::deque<Instance> instances;

    const Property* FindProperty(std::string_view property_name) const;
};

struct Association {
    std::string class_name;
    std::string from_role, to_role;
    const Instance* from = nullptr;
    const Instance* to = nullptr;
};

/// Lookups take names in any case, as CIM does.
struct Namespace {
    std::string name;
    std::deque<Class> classes;
    std::vector<Association> associations;

    const Class* FindClass(std::string_view class_name) const;
    const Instance* FindInstance(const ObjectPath& path) const;
    /// Described, or named as the superclass of a described class.
    bool KnowsClass(std::string_view class_name) const;
    /// Whether the first class is the second or descends from it.
    bool IsA(std::string_view class_name, std::string_view ancestor) const;
};

struct Host {
    std::string name;
    std::deque<Namespace> namespaces;

    const Namespace* FindNamespace(std::string_view namespace_name) const;
};

}  // namespace simhost
