#include "simhost/namespace_reader.h"

#include <nlohmann/json.hpp>

#include "simhost/description_values.h"
#include "simhost/instance_reader.h"
#include "simhost/path_text.h"
#include "simhost/text.h"

namespace simhost {

namespace {

void CheckName(const std::string& name, const DescriptionNode& where) {
    if (!IsCimName(name)) {
        where.Fail(Quote(name) + " is no CIM name",
                   "write letters, digits and underscores, no digit first");
    }
}

std::string KnownTypes() {
    std::string names;
    for (const CimType& type : CimTypes()) {
        names += (names.empty() ? "" : ", ") + std::string(type.name);
    }
    return names;
}

void ReadType(const DescriptionNode& node, Property& property) {
    std::string type = node.Text("write a type, such as \"string\" or \"uint16[]\"");
    property.array = type.ends_with("[]");
    if (property.array) {
        type.resize(type.size() - 2);
    }
    if (FindCimType(type) == nullptr) {
        node.Fail("unknown type " + Quote(type),
                  "write one of " + KnownTypes() + ", with [] after it for an array");
    }
    property.type = type;
}

Property ReadProperty(const DescriptionNode& node, const std::string& origin) {
    CheckName(node.name(), node);
    Property property;
    property.name = node.name();
    property.origin = origin;
    if (!node.json().is_object()) {
        ReadType(node, property);
        return property;
    }
    node.AllowOnly({"type", "qualifiers"});
    ReadType(node.Required("type", "add \"type\": \"string\", for example"), property);
    if (const auto qualifiers = node.Member("qualifiers")) {
        property.qualifiers_xml = QualifiersXml(*qualifiers);
    }
    return property;
}

void AddProperty(Property property, Class& result) {
    for (Property& inherited : result.properties) {
        if (EqualIgnoringCase(inherited.name, property.name)) {
            inherited = std::move(property);
            return;
        }
    }
    result.properties.push_back(std::move(property));
}

/// Reads one namespace. Classes are completed in an order of their own, since a class may stand
/// before its superclass.
class NamespaceReader {
public:
    NamespaceReader(const DescriptionNode& node, Namespace& result)
        : node_(node), result_(result) {}

    void Read() {
        node_.AllowOnly({"classes", "associations"});
        if (const auto classes = node_.Member("classes")) {
            const auto class_nodes = classes->Members("write {\"Class\": {...}, ...}");
            ReadClasses(class_nodes);
        }
        if (const auto associations = node_.Member("associations")) {
            for (const auto& association : associations->Elements("write [{...}, {...}]")) {
                ReadAssociation(association);
            }
        }
    }

private:
    void ReadClasses(const std::vector<DescriptionNode>& nodes) {
        for (const DescriptionNode& node : nodes) {
            AddClass(node);
        }
        std::vector<bool> complete(nodes.size(), false);
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            Complete(i, nodes, complete);
        }
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            ReadInstances(nodes[i], result_.classes[i]);
        }
    }

    void AddClass(const DescriptionNode& node) {
        node.AllowOnly(
            {"superclass", "keys", "properties", "defaults", "instances", "columns", "rows"});
        CheckName(node.name(), node);
        if (result_.FindClass(node.name()) != nullptr) {
            node.Fail("class " + Quote(node.name()) + " is described twice",
                      "names differ in more than case; merge the two");
        }
        Class& added = result_.classes.emplace_back();
        added.name = node.name();
        if (const auto superclass = node.Member("superclass")) {
            added.superclass = superclass->Text("write the name of a class");
            CheckName(added.superclass, *superclass);
        }
    }

    /// Gives a class its superclass's properties and keys, then its own.
    void Complete(std::size_t index, const std::vector<DescriptionNode>& nodes,
                  std::vector<bool>& complete, std::size_t depth = 0) {
        if (complete[index]) {
            return;
        }
        Class& described = result_.classes[index];
        if (depth == nodes.size()) {
            nodes[index].Fail("class " + described.name + " descends from itself",
                              "correct \"superclass\"");
        }
        if (const auto parent = IndexOf(described.superclass)) {
            Complete(*parent, nodes, complete, depth + 1);
            described.properties = result_.classes[*parent].properties;
            described.keys = result_.classes[*parent].keys;
        }
        if (const auto properties = nodes[index].Member("properties")) {
            for (const auto& property : properties->Members("write {\"Name\": \"type\", ...}")) {
                AddProperty(ReadProperty(property, described.name), described);
            }
        }
        ReadKeys(nodes[index], described);
        complete[index] = true;
    }

    std::optional<std::size_t> IndexOf(const std::string& class_name) const {
        for (std::size_t i = 0; i < result_.classes.size(); ++i) {
            if (EqualIgnoringCase(result_.classes[i].name, class_name)) {
                return i;
            }
        }
        return std::nullopt;
    }

    static void ReadKeys(const DescriptionNode& class_node, Class& described) {
        const auto keys = class_node.Member("keys");
        if (!keys) {
            return;
        }
        described.keys.clear();
        for (const DescriptionNode& key : keys->Elements("write [\"Property\", ...]")) {
            const std::string& name = key.Text("write the name of a property");
            const Property* property = described.FindProperty(name);
            if (property == nullptr || property->array) {
                key.Fail("class " + described.name + " has no property " + Quote(name) +
                             " that can be a key",
                         "declare it in \"properties\", not as an array");
            }
            described.keys.push_back(property->name);
        }
    }

    void ReadAssociation(const DescriptionNode& node) {
        const std::string remedy =
            "write {\"class\": \"Association\", \"from\": \"Class.Key=\\\"value\\\"\", \"to\": "
            "...}";
        node.AllowOnly({"class", "from", "to", "from_role", "to_role"});
        Association association;
        association.class_name = node.Required("class", remedy).Text(remedy);
        association.from = &ReferredInstance(node.Required("from", remedy));
        association.to = &ReferredInstance(node.Required("to", remedy));
        association.from_role = Role(node, "from_role", "Antecedent");
        association.to_role = Role(node, "to_role", "Dependent");
        result_.associations.push_back(std::move(association));
    }

    static std::string Role(const DescriptionNode& node, const char* member,
                            const char* otherwise) {
        const auto role = node.Member(member);
        return role ? role->Text("write the name of a reference property") : otherwise;
    }

    const Instance& ReferredInstance(const DescriptionNode& node) const {
        const std::string& text = node.Text("write a path such as \"Class.Key=\\\"value\\\"\"");
        const auto path = ParsePath(text);
        if (!path) {
            node.Fail(Quote(text) + " is no object path",
                      "write Class.Key=\\\"value\\\", more keys after commas");
        }
        const Instance* instance = result_.FindInstance(*path);
        if (instance == nullptr) {
            node.Fail("there is no instance " + Quote(text) + " in " + result_.name,
                      "describe it, or correct the path");
        }
        return *instance;
    }

    const DescriptionNode& node_;
    Namespace& result_;
};

}  // namespace

void ReadNamespace(const DescriptionNode& node, Namespace& result) {
    NamespaceReader(node, result).Read();
}

}  // namespace simhost
