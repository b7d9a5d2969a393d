// What the hosts of a fleet differ in, as functions of their numbers alone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace simhost {

/// Hosts are numbered from 1 to this. No two of them share a serial number, a UUID, a MAC address,
/// an IPv6 address or an asset tag.
constexpr std::uint32_t kMaxHostNumber = (1U << 24) - 1;

struct Product {
    std::string_view model;
    std::string_view type;
    std::string_view description;
};

/// The described name with the number instead of its own: "esx00042" for "esx01".
std::string NumberedName(std::string_view described_name, std::uint32_t number);
std::string SerialNumberOf(std::uint32_t number);
/// Of version 4, in capital letters.
std::string UuidOf(std::uint32_t number);
std::string AssetTagOf(std::uint32_t number);
const Product& ProductOf(std::uint32_t number);
std::string_view HypervisorBuildOf(std::uint32_t number);

/// Locally administered, as 12 hexadecimal digits. A port may have several, the first is 0.
std::string MacAddressOf(std::uint32_t number, std::size_t port, std::size_t which);
/// From the three networks for documentation, which have 762 addresses in all: hosts share them.
std::string Ipv4AddressOf(std::uint32_t number, std::size_t interface);
/// From the prefix for documentation, 2001:db8::/32.
std::string Ipv6AddressOf(std::uint32_t number, std::size_t interface);

/// How much newer than described a package's build is: zero for most packages.
std::uint64_t PackageAdvance(std::uint32_t number, std::size_t package);
/// How many of the newest records the event log lacks: a few.
std::size_t MissingRecordsOf(std::uint32_t number);

/// Mixes the bits of a number: the same on every machine.
std::uint64_t Mixed(std::uint64_t number);

}  // namespace simhost
