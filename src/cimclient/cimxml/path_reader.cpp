// Paths: instance names, their keys, and where the objects live.
#include "cimxml/depth_guard.h"
#include "cimxml/object_reader.h"
#include "reply_errors.h"
#include "reply_limits.h"

namespace cimclient {

using namespace Pegasus;

namespace {

struct KeyType {
    const char* name;
    CIMKeyBinding::Type type;
};

constexpr KeyType kKeyTypes[] = {
    {"", CIMKeyBinding::STRING},
    {"string", CIMKeyBinding::STRING},
    {"boolean", CIMKeyBinding::BOOLEAN},
    {"numeric", CIMKeyBinding::NUMERIC},
};

const KeyType* KeyTypeNamed(std::string_view name) {
    for (const KeyType& key_type : kKeyTypes) {
        if (name == key_type.name) {
            return &key_type;
        }
    }
    return nullptr;
}

/// Of paths that stand for themselves: their elements, and whether they name a host.
struct FullPath {
    const char* element;
    bool has_host;
};

constexpr FullPath kFullPaths[] = {
    {"INSTANCEPATH", true},
    {"CLASSPATH", true},
    {"LOCALINSTANCEPATH", false},
    {"LOCALCLASSPATH", false},
};

const FullPath* FullPathNamed(std::string_view element) {
    for (const FullPath& path : kFullPaths) {
        if (element == path.element) {
            return &path;
        }
    }
    return nullptr;
}

}  // namespace

std::string_view ObjectReader::Attribute(const char* attribute) {
    return xml_.FindAttribute(attribute).value_or(std::string_view());
}

CIMName ObjectReader::ClassAttribute(const char* element, const char* attribute) {
    const auto where = [&] { return std::string(element) + "." + attribute; };
    const auto value = xml_.FindAttribute(attribute);
    if (!value) {
        xml_.FailValidation("missing " + where() + " attribute");
    }
    CIMName name = names_.Name(*value);
    if (name.isNull()) {
        xml_.FailSemantic("Illegal value for " + where() + " attribute");
    }
    return name;
}

CIMObjectPath ObjectReader::ReadInstanceName() {
    const CIMName class_name = ClassAttribute("INSTANCENAME", "CLASSNAME");
    xml_.ExpectOpen("INSTANCENAME");
    Array<CIMKeyBinding> keys;
    // A single key may come without its name.
    if (xml_.IsOpen("KEYVALUE")) {
        keys.append(ReadKeyValue(CIMName()));
    } else if (xml_.IsOpen("VALUE.REFERENCE")) {
        keys.append(ReadReferenceKey(CIMName()));
    }
    while (xml_.IsOpen("KEYBINDING")) {
        keys.append(ReadKeyBinding());
    }
    xml_.ExpectClose("INSTANCENAME");
    return CIMObjectPath(String(), CIMNamespaceName(), class_name, keys);
}

CIMKeyBinding ObjectReader::ReadKeyBinding() {
    const CIMName name = ClassAttribute("KEYBINDING", "NAME");
    xml_.ExpectOpen("KEYBINDING");
    CIMKeyBinding key =
        xml_.IsOpen("VALUE.REFERENCE") ? ReadReferenceKey(name) : ReadKeyValue(name);
    xml_.ExpectClose("KEYBINDING");
    return key;
}

CIMKeyBinding ObjectReader::ReadKeyValue(const CIMName& name) {
    if (!xml_.IsOpen("KEYVALUE")) {
        xml_.FailValidation("Expected KEYVALUE or VALUE.REFERENCE element");
    }
    const KeyType* const key_type = KeyTypeNamed(Attribute("VALUETYPE"));
    xml_.Advance();
    const String value = texts_.Text(xml_.ReadText());
    xml_.ExpectClose("KEYVALUE");
    if (key_type == nullptr) {
        xml_.FailSemantic(
            "Illegal value for KEYVALUE.VALUETYPE attribute; CIMValue must be one of \"string\", "
            "\"boolean\", or \"numeric\"");
    }
    return CIMKeyBinding(name, value, key_type->type);
}

CIMKeyBinding ObjectReader::ReadReferenceKey(const CIMName& name) {
    const String text = ReadReference().toString();
    if (text.utf8().size() > kMaxReferenceBytes) {
        xml_.FailValidation("The reference in a key is too long");
    }
    return CIMKeyBinding(name, text, CIMKeyBinding::REFERENCE);
}

CIMObjectPath ObjectReader::ReadReference() {
    if (reference_depth_ == kMaxReferenceDepth) {
        xml_.FailValidation("References are nested too deep");
    }
    const DepthGuard level(reference_depth_);
    xml_.ExpectOpen("VALUE.REFERENCE");
    CIMObjectPath path;
    if (xml_.IsOpen("INSTANCENAME")) {
        path = ReadInstanceName();
    } else if (xml_.IsOpen("CLASSNAME")) {
        path = ReadClassName();
    } else {
        path = ReadFullPath();
    }
    xml_.ExpectClose("VALUE.REFERENCE");
    return path;
}

CIMObjectPath ObjectReader::ReadClassName() {
    const CIMName name = ClassAttribute("CLASSNAME", "NAME");
    xml_.ExpectOpen("CLASSNAME");
    xml_.ExpectClose("CLASSNAME");
    return CIMObjectPath(String(), CIMNamespaceName(), name);
}

/// INSTANCEPATH, CLASSPATH, LOCALINSTANCEPATH or LOCALCLASSPATH.
CIMObjectPath ObjectReader::ReadFullPath() {
    const FullPath* const path = FullPathNamed(xml_.Peek().name);
    if (path == nullptr) {
        xml_.FailValidation("Expected INSTANCEPATH or CLASSPATH element");
    }
    xml_.Advance();
    String host;
    if (path->has_host) {
        xml_.ExpectOpen("NAMESPACEPATH");
        host = ReadHost();
    }
    const CIMNamespaceName name_space = ReadLocalNamespacePath();
    if (path->has_host) {
        xml_.ExpectClose("NAMESPACEPATH");
    }
    const CIMObjectPath local = xml_.IsOpen("CLASSNAME") ? ReadClassName() : ReadInstanceName();
    xml_.ExpectClose(path->element);
    try {
        return CIMObjectPath(host, name_space, local.getClassName(), local.getKeyBindings());
    } catch (const MalformedObjectNameException& error) {
        throw ResponseError{{std::string(error.getMessage().utf8())}};
    }
}

String ObjectReader::ReadHost() {
    xml_.ExpectOpen("HOST");
    const std::string_view host = xml_.ReadText();
    if (host.empty()) {
        xml_.FailValidation("expected content of HOST element");
    }
    if (host.size() > kMaxPlaceBytes) {
        xml_.FailValidation("The name of a host is too long");
    }
    String text = String::FromUtf8(host);
    xml_.ExpectClose("HOST");
    return text;
}

CIMNamespaceName ObjectReader::ReadLocalNamespacePath() {
    xml_.ExpectOpen("LOCALNAMESPACEPATH");
    std::string name_space;
    while (xml_.IsOpen("NAMESPACE")) {
        const CIMName name = ClassAttribute("NAMESPACE", "NAME");
        name_space.append(name_space.empty() ? "" : "/").append(name.getString().utf8());
        if (name_space.size() > kMaxPlaceBytes) {
            xml_.FailValidation("The name of a namespace is too long");
        }
        xml_.ExpectOpen("NAMESPACE");
        xml_.ExpectClose("NAMESPACE");
    }
    if (name_space.empty()) {
        xml_.FailValidation(
            "Expected one or more NAMESPACE elements within LOCALNAMESPACEPATH element");
    }
    xml_.ExpectClose("LOCALNAMESPACEPATH");
    return CIMNamespaceName(String::FromUtf8(name_space));
}

}  // namespace cimclient
