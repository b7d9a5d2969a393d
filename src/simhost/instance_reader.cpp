#include "simhost/instance_reader.h"

#include <algorithm>

#include "simhost/description_values.h"
#include "simhost/path_text.h"
#include "simhost/text.h"

namespace simhost {

namespace {

/// A value of an instance before it is in its place.
struct GivenValue {
    const Property* property;
    const DescriptionNode* node;
};

const Property& DeclaredProperty(const Class& described, const std::string& name,
                                 const DescriptionNode& where) {
    if (const Property* property = described.FindProperty(name)) {
        return *property;
    }
    where.Fail("class " + described.name + " has no property " + Quote(name),
               "declare it in \"properties\", or correct the name");
}

KeyBinding ReadKey(const std::string& key_name, const Class& described,
                   const std::vector<GivenValue>& values, const DescriptionNode& where) {
    for (const GivenValue& value : values) {
        if (EqualIgnoringCase(value.property->name, key_name)) {
            const CimType& type = *FindCimType(value.property->type);
            return {value.property->name, std::string(KeyValueType(type)),
                    KeyText(*value.node, type)};
        }
    }
    where.Fail("the key " + Quote(key_name) + " is missing",
               "give every instance of " + described.name + " a value for it");
}

std::vector<GivenValue> ReadMembers(const std::vector<DescriptionNode>& members,
                                    const Class& described) {
    std::vector<GivenValue> values;
    values.reserve(members.size());
    for (const DescriptionNode& member : members) {
        values.push_back({&DeclaredProperty(described, member.name(), member), &member});
    }
    return values;
}

/// Adds instances to a class. Defaults stand in for what an instance leaves out.
class InstanceReader {
public:
    InstanceReader(std::vector<GivenValue> defaults, Class& described)
        : defaults_(std::move(defaults)), described_(described) {}

    void ReadObjects(const DescriptionNode& list) {
        for (const DescriptionNode& object : list.Elements("write [{...}, {...}]")) {
            const auto members = object.Members("write {\"Property\": value, ...}");
            Add(ReadMembers(members, described_), object);
        }
    }

    void ReadRows(const DescriptionNode& columns, const DescriptionNode& rows) {
        std::vector<const Property*> properties;
        for (const DescriptionNode& column : columns.Elements("write [\"Property\", ...]")) {
            const std::string& name = column.Text("write the name of a property");
            properties.push_back(&DeclaredProperty(described_, name, column));
        }
        for (const DescriptionNode& row : rows.Elements("write [[...], [...]]")) {
            const auto cells = row.Elements("write [value, ...], in the order of \"columns\"");
            if (cells.size() > properties.size()) {
                row.Fail("the row has " + std::to_string(cells.size()) + " values for " +
                             std::to_string(properties.size()) + " columns",
                         "add the missing columns, or drop values");
            }
            std::vector<GivenValue> values;
            for (std::size_t i = 0; i < cells.size(); ++i) {
                values.push_back({properties[i], &cells[i]});
            }
            Add(std::move(values), row);
        }
    }

private:
    void Add(std::vector<GivenValue> values, const DescriptionNode& where) {
        values.insert(values.end(), defaults_.begin(), defaults_.end());
        Instance instance;
        instance.of_class = &described_;
        instance.path.class_name = described_.name;
        for (const std::string& key : described_.keys) {
            instance.path.keys.push_back(ReadKey(key, described_, values, where));
        }
        SortKeys(instance.path);
        for (const Property& property : described_.properties) {
            AddValue(property, values, instance);
        }
        described_.instances.push_back(std::move(instance));
    }

    static void AddValue(const Property& property, const std::vector<GivenValue>& values,
                         Instance& instance) {
        const auto given = std::find_if(values.begin(), values.end(), [&](const GivenValue& value) {
            return value.property == &property;
        });
        if (given != values.end()) {
            instance.values.push_back(
                {&property, ValueXml(*given->node, *FindCimType(property.type), property.array)});
        }
    }

    const std::vector<GivenValue> defaults_;
    Class& described_;
};

}  // namespace

void ReadInstances(const DescriptionNode& class_node, Class& result) {
    const auto defaults = class_node.Member("defaults");
    const auto default_members = defaults ? defaults->Members("write {\"Property\": value, ...}")
                                          : std::vector<DescriptionNode>();
    InstanceReader reader(ReadMembers(default_members, result), result);
    if (const auto list = class_node.Member("instances")) {
        reader.ReadObjects(*list);
    }
    const auto columns = class_node.Member("columns");
    const auto rows = class_node.Member("rows");
    if (columns.has_value() != rows.has_value()) {
        class_node.Fail("\"columns\" and \"rows\" belong together", "write both or neither");
    }
    if (rows) {
        reader.ReadRows(*columns, *rows);
    }
    if (!result.instances.empty() && result.keys.empty()) {
        class_node.Fail("class " + result.name + " has instances but no keys",
                        "add \"keys\": [\"...\"]");
    }
}

}  // namespace simhost
