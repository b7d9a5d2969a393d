#include "simhost/fleet_identity.h"

#include <charconv>
#include <iterator>

namespace simhost {

namespace {

constexpr Product kProducts[] = {
    {"CS2460 M5", "8871AC1", "Contoso CS2460 M5: two-socket rack server"},
    {"CS2480 M5", "8872AC1", "Contoso CS2480 M5: two-socket rack server, 24 bays"},
    {"CS4860 M5", "8880AC1", "Contoso CS4860 M5: four-socket rack server"},
    {"CS1240 M4", "7915AC1", "Contoso CS1240 M4: blade server"},
};

constexpr std::string_view kHypervisorBuilds[] = {"13006603", "14320388", "15160138", "16713306",
                                                  "17700523"};

constexpr std::string_view kIpv4Networks[] = {"192.0.2.", "198.51.100.", "203.0.113."};
constexpr std::size_t kAddressesOfNetwork = 254;

/// What a mixed number is for, so that a host's properties do not go together.
enum Purpose : std::uint64_t {
    kUuidHead = 1,
    kUuidTail,
    kProduct,
    kBuild,
    kRecords,
    kPackages,
};

constexpr int kNumberBits = 24;

std::uint64_t MixedFor(Purpose purpose, std::uint32_t number, std::uint64_t detail = 0) {
    constexpr int kPurposeBits = 8;
    return Mixed((detail << (kNumberBits + kPurposeBits)) | (purpose << kNumberBits) | number);
}

template <class T, std::size_t kSize>
const T& OneOf(const T (&choice)[kSize], std::uint64_t mixed) {
    return choice[mixed % kSize];
}

constexpr int kHex = 16;
constexpr int kDecimal = 10;

std::string Padded(std::uint64_t value, std::size_t width, int base) {
    constexpr std::size_t kMostDigits = 20;
    char digits[kMostDigits];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), value, base).ptr;
    const auto length = static_cast<std::size_t>(end - digits);
    return std::string(width > length ? width - length : 0, '0').append(digits, length);
}

}  // namespace

/// The finaliser of splitmix64: a bijection.
std::uint64_t Mixed(std::uint64_t number) {
    std::uint64_t mixed = number + 0x9E3779B97F4A7C15U;
    mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
    return mixed ^ (mixed >> 31U);
}

std::string NumberedName(std::string_view described_name, std::uint32_t number) {
    constexpr std::size_t kDigits = 5;
    const auto end = described_name.find_last_not_of("0123456789");
    return std::string(described_name.substr(0, end + 1)) + Padded(number, kDigits, kDecimal);
}

/// Seven characters as the built-in host has them. An odd factor permutes the numbers below a power
/// of two.
std::string SerialNumberOf(std::uint32_t number) {
    constexpr std::string_view kDigits = "0123456789ABCDEFGHJKLMNPQRSTVWXY";
    constexpr std::uint32_t kFactor = 0x9E3779B1U;
    constexpr std::uint32_t kLength = 5;
    std::uint32_t rest = number * kFactor % (1U << 25U);
    std::string serial = "06";
    for (std::uint32_t i = 0; i < kLength; ++i) {
        serial += kDigits[rest % kDigits.size()];
        rest /= static_cast<std::uint32_t>(kDigits.size());
    }
    return serial;
}

std::string UuidOf(std::uint32_t number) {
    constexpr std::uint64_t kVersion4 = 0x4000;
    constexpr std::uint64_t kVariant1 = 0x8000;
    const std::uint64_t head = MixedFor(kUuidHead, number);
    const std::uint64_t tail = MixedFor(kUuidTail, number);
    const auto hex = [](std::uint64_t value, std::size_t width) {
        return Padded(value, width, kHex);
    };
    std::string uuid = hex(head >> 32U, 8) + "-" + hex((head >> 16U) & 0xFFFFU, 4) + "-" +
                       hex((head & 0x0FFFU) | kVersion4, 4) + "-" +
                       hex(((tail >> 48U) & 0x3FFFU) | kVariant1, 4) + "-" +
                       hex(tail & 0xFFFF'FFFF'FFFFU, 12);
    for (char& c : uuid) {
        c = static_cast<char>(c >= 'a' && c <= 'f' ? c - 'a' + 'A' : c);
    }
    return uuid;
}

std::string AssetTagOf(std::uint32_t number) {
    constexpr std::size_t kDigits = 5;
    return "RZ-SÜD-" + Padded(number, kDigits, kDecimal);
}

const Product& ProductOf(std::uint32_t number) {
    return OneOf(kProducts, MixedFor(kProduct, number));
}

std::string_view HypervisorBuildOf(std::uint32_t number) {
    return OneOf(kHypervisorBuilds, MixedFor(kBuild, number));
}

std::string MacAddressOf(std::uint32_t number, std::size_t port, std::size_t which) {
    return "02" + Padded(port & 0xFFU, 2, kHex) + Padded(which & 0xFFU, 2, kHex) +
           Padded(number, 6, kHex);
}

std::string Ipv4AddressOf(std::uint32_t number, std::size_t interface) {
    constexpr std::size_t kInterfacesOfHost = 2;
    const std::size_t index =
        (number * kInterfacesOfHost + interface) % (std::size(kIpv4Networks) * kAddressesOfNetwork);
    return std::string(kIpv4Networks[index / kAddressesOfNetwork]) +
           std::to_string(index % kAddressesOfNetwork + 1);
}

std::string Ipv6AddressOf(std::uint32_t number, std::size_t interface) {
    const auto hex = [](std::uint64_t value) { return Padded(value, 1, kHex); };
    return "2001:db8:" + hex(number >> 16U) + ":" + hex(number & 0xFFFFU) +
           "::" + hex(interface + 1);
}

std::uint64_t PackageAdvance(std::uint32_t number, std::size_t package) {
    constexpr std::uint64_t kOneIn = 8;
    constexpr std::uint64_t kBuilds = 3;
    constexpr std::uint64_t kBetweenBuilds = 1000;
    const std::uint64_t mixed = MixedFor(kPackages, number, package);
    return mixed % kOneIn == 0 ? (mixed / kOneIn % kBuilds + 1) * kBetweenBuilds : 0;
}

std::size_t MissingRecordsOf(std::uint32_t number) {
    constexpr std::uint64_t kMost = 15;
    return MixedFor(kRecords, number) % (kMost + 1);
}

}  // namespace simhost
