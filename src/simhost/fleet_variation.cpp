#include "simhost/fleet_variation.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "simhost/fleet_identity.h"
#include "simhost/text.h"

namespace simhost {

namespace {

/// One text to be replaced, and where it stands.
struct Place {
    const Host& host;
    const Instance& instance;  ///< as it is described
    std::uint32_t number;
    std::size_t index;      ///< of the instance among those of its class
    std::size_t element;    ///< of an array
    std::string_view text;  ///< as it is described
};

/// The elements' texts of a property's XML, as they stand.
std::vector<std::string_view> ElementTexts(std::string_view xml) {
    constexpr std::string_view kBegin = "<VALUE>";
    std::vector<std::string_view> texts;
    for (auto at = xml.find(kBegin); at != std::string_view::npos; at = xml.find(kBegin, at)) {
        at += kBegin.size();
        const auto end = std::min(xml.find("</VALUE>", at), xml.size());
        texts.push_back(xml.substr(at, end - at));
    }
    return texts;
}

std::string Name(const Place& place) { return NumberedName(place.host.name, place.number); }

std::string Serial(const Place& place) { return SerialNumberOf(place.number); }

std::string Model(const Place& place) {
    const Product& product = ProductOf(place.number);
    return std::string(product.model) + " -[" + std::string(product.type) + "]-";
}

std::string SystemName(const Place& place) {
    std::string name = "Contoso";
    std::ranges::remove_copy(ProductOf(place.number).model, std::back_inserter(name), ' ');
    return name + "-" + SerialNumberOf(place.number);
}

std::string Guid(const Place& place) { return UuidOf(place.number); }

std::string TypeAndSerial(const Place& place) {
    return std::string(ProductOf(place.number).type) + ":" + SerialNumberOf(place.number);
}

std::string ProductName(const Place& place) {
    return std::string(ProductOf(place.number).description);
}

std::string Tag(const Place& place) { return AssetTagOf(place.number); }

/// What stands at the same place of IdentifyingDescriptions says what it is.
std::string Identification(const Place& place) {
    struct Kind {
        std::string_view description;
        std::string (*text)(const Place&);
    };
    constexpr Kind kKinds[] = {{"CIM:GUID", &Guid},
                               {"CIM:Model:SerialNumber", &TypeAndSerial},
                               {"CIM:ProductName", &ProductName},
                               {"CIM:Tag", &Tag}};
    for (const PropertyValue& value : place.instance.values) {
        if (!EqualIgnoringCase(value.property->name, "IdentifyingDescriptions")) {
            continue;
        }
        const auto descriptions = ElementTexts(value.xml);
        for (const Kind& kind : kKinds) {
            if (place.element < descriptions.size() &&
                descriptions[place.element] == kind.description) {
                return kind.text(place);
            }
        }
    }
    return std::string(place.text);
}

std::string HypervisorBuild(const Place& place) {
    return std::string(HypervisorBuildOf(place.number));
}

/// Versions, and identifiers that end in one, get another build number at their end.
std::string Advanced(const Place& place) {
    constexpr std::size_t kMostDigits = 9;
    const std::uint64_t advance = PackageAdvance(place.number, place.index);
    const auto before = place.text.find_last_not_of("0123456789");
    std::size_t digits = place.text.size() - (before == std::string_view::npos ? 0 : before + 1);
    digits = std::min(digits, kMostDigits);
    if (advance == 0 || digits == 0) {
        return std::string(place.text);
    }
    const auto start = place.text.size() - digits;
    const std::uint64_t build = std::stoul(std::string(place.text.substr(start)));
    return std::string(place.text.substr(0, start)) + std::to_string(build + advance);
}

std::string MacAddress(const Place& place) {
    return MacAddressOf(place.number, place.index, place.element);
}

std::string Ipv4Address(const Place& place) { return Ipv4AddressOf(place.number, place.index); }

std::string Ipv6Address(const Place& place) { return Ipv6AddressOf(place.number, place.index); }

/// What differs from host to host. The texts contain nothing that XML needs to escape.
struct Rule {
    std::string_view class_name;
    std::string_view property;
    std::string (*text)(const Place&);
};

constexpr Rule kRules[] = {
    {"OMC_Chassis", "Model", &Model},
    {"OMC_Chassis", "SerialNumber", &Serial},
    {"IBM_ComputerSystem", "Name", &SystemName},
    {"IBM_ComputerSystem", "OtherIdentifyingInfo", &Identification},
    {"VMware_HypervisorSoftwareIdentity", "LargeBuildNumber", &HypervisorBuild},
    {"VMware_ComponentSoftwareIdentity", "InstanceID", &Advanced},
    {"VMware_ComponentSoftwareIdentity", "VersionString", &Advanced},
    {"VMware_EthernetPort", "SystemName", &Name},
    {"VMware_EthernetPort", "PermanentAddress", &MacAddress},
    {"VMware_EthernetPort", "NetworkAddresses", &MacAddress},
    {"VMware_KernelIPv4ProtocolEndpoint", "SystemName", &Name},
    {"VMware_KernelIPv4ProtocolEndpoint", "IPv4Address", &Ipv4Address},
    {"VMware_KernelIPv6ProtocolEndpoint", "SystemName", &Name},
    {"VMware_KernelIPv6ProtocolEndpoint", "IPv6Address", &Ipv6Address},
};

constexpr std::string_view kLogRecords = "OMC_IpmiLogRecord";

std::string ReplacedXml(const Rule& rule, Place place, const std::string& xml) {
    std::string replaced;
    std::string_view rest = xml;
    for (const std::string_view text : ElementTexts(xml)) {
        const auto before = static_cast<std::size_t>(text.data() - rest.data());
        place.text = text;
        replaced += rest.substr(0, before);
        replaced += rule.text(place);
        rest.remove_prefix(before + text.size());
        ++place.element;
    }
    return replaced.append(rest);
}

void ReplaceValue(const Rule& rule, const Place& place, const Property& property,
                  HostVariant& variant) {
    const Instance& described = place.instance;
    for (std::size_t i = 0; i < described.values.size(); ++i) {
        if (described.values[i].property == &property) {
            std::string xml = ReplacedXml(rule, place, described.values[i].xml);
            if (xml != described.values[i].xml) {
                variant.Own(described).values[i].xml = std::move(xml);
            }
        }
    }
}

void ReplaceKey(const Rule& rule, Place place, HostVariant& variant) {
    const Instance& described = place.instance;
    for (std::size_t i = 0; i < described.path.keys.size(); ++i) {
        if (EqualIgnoringCase(described.path.keys[i].name, rule.property)) {
            place.text = described.path.keys[i].value;
            std::string value = rule.text(place);
            if (value != place.text) {
                variant.Own(described).path.keys[i].value = std::move(value);
            }
        }
    }
}

void ApplyRule(const Rule& rule, const Class& described, std::uint32_t number,
               HostVariant& variant) {
    const Property* const property = described.FindProperty(rule.property);
    if (property == nullptr) {
        return;
    }
    const bool is_key = std::ranges::find(described.keys, property->name) != described.keys.end();
    std::size_t index = 0;
    for (const Instance& instance : described.instances) {
        const Place place{variant.described(), instance, number, index, 0, {}};
        ReplaceValue(rule, place, *property, variant);
        if (is_key) {
            ReplaceKey(rule, place, variant);
        }
        ++index;
    }
}

void VaryClass(const Class& described, std::uint32_t number, HostVariant& variant) {
    for (const Rule& rule : kRules) {
        if (EqualIgnoringCase(rule.class_name, described.name)) {
            ApplyRule(rule, described, number, variant);
        }
    }
    if (EqualIgnoringCase(kLogRecords, described.name)) {
        const std::size_t missing =
            std::min(MissingRecordsOf(number), described.instances.size() / 2);
        std::for_each(described.instances.end() - static_cast<std::ptrdiff_t>(missing),
                      described.instances.end(),
                      [&](const Instance& newest) { variant.LeaveOut(newest); });
    }
}

}  // namespace

HostVariant NumberedVariant(const Host& described, std::uint32_t number) {
    HostVariant variant(described);
    variant.Rename(NumberedName(described.name, number));
    for (const Namespace& name_space : described.namespaces) {
        for (const Class& its_class : name_space.classes) {
            VaryClass(its_class, number, variant);
        }
    }
    return variant;
}

}  // namespace simhost
