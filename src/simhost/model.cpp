#include "simhost/model.h"

#include <algorithm>

#include "simhost/text.h"

namespace simhost {

namespace {

template <class Sequence>
auto FindByName(const Sequence& sequence, std::string_view name) -> decltype(&sequence.front()) {
    for (const auto& element : sequence) {
        if (EqualIgnoringCase(element.name, name)) {
            return &element;
        }
    }
    return nullptr;
}

std::string Quoted(const std::string& text) {
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            quoted += '\\';
        }
        quoted += c;
    }
    return quoted + '"';
}

}  // namespace

std::string ObjectPath::Text() const {
    std::string text = class_name;
    char separator = '.';
    for (const KeyBinding& key : keys) {
        text += separator + key.name + '=';
        text += key.value_type == "string" ? Quoted(key.value) : key.value;
        separator = ',';
    }
    return text;
}

bool ObjectPath::Denotes(const ObjectPath& other) const {
    return EqualIgnoringCase(class_name, other.class_name) &&
           std::equal(keys.begin(), keys.end(), other.keys.begin(), other.keys.end(),
                      [](const KeyBinding& a, const KeyBinding& b) {
                          return a.value == b.value && EqualIgnoringCase(a.name, b.name);
                      });
}

const Property* Class::FindProperty(std::string_view property_name) const {
    return FindByName(properties, property_name);
}

const Class* Namespace::FindClass(std::string_view class_name) const {
    return FindByName(classes, class_name);
}

const Instance* Namespace::FindInstance(const ObjectPath& path) const {
    const Class* described = FindClass(path.class_name);
    if (described == nullptr) {
        return nullptr;
    }
    const auto found =
        std::find_if(described->instances.begin(), described->instances.end(),
                     [&](const Instance& instance) { return instance.path.Denotes(path); });
    return found == described->instances.end() ? nullptr : &*found;
}

bool Namespace::KnowsClass(std::string_view class_name) const {
    return std::any_of(classes.begin(), classes.end(),
                       [&](const Class& described) { return IsA(described.name, class_name); });
}

bool Namespace::IsA(std::string_view class_name, std::string_view ancestor) const {
    while (!EqualIgnoringCase(class_name, ancestor)) {
        const Class* described = FindClass(class_name);
        if (described == nullptr || described->superclass.empty()) {
            return false;
        }
        class_name = described->superclass;
    }
    return true;
}

const Namespace* Host::FindNamespace(std::string_view namespace_name) const {
    return FindByName(namespaces, namespace_name);
}

}  // namespace simhost
