#include "object_model/host_names.h"

#include <arpa/inet.h>

#include <algorithm>
#include <cstdint>
#include <string>

#include "common/text/ascii.h"
#include "common/text/number.h"

namespace Pegasus::kalvex::detail {

namespace {

using Zentar::IsDigit;

constexpr std::size_t kLongestHostName = 255;
constexpr std::size_t kLongestLabel = 63;

bool IsLabelCharacter(char c) { return Zentar::IsLetter(c) || IsDigit(c) || c == '-' || c == '_'; }

bool IsLabel(std::string_view label) {
    return !label.empty() && label.size() <= kLongestLabel && label.front() != '-' &&
           std::all_of(label.begin(), label.end(), IsLabelCharacter);
}

bool IsPort(std::string_view port) { return port.empty() || Zentar::NumberOf<std::uint16_t>(port); }

bool IsLinkLocal(const in6_addr& address) {
    return address.s6_addr[0] == 0xFE && (address.s6_addr[1] & 0xC0) == 0x80;
}

/// "[address]" or "[address]:port".
bool IsBracketedIPv6(std::string_view host) {
    const std::size_t close = host.find(']');
    if (close == std::string_view::npos) {
        return false;
    }
    const std::string_view rest = host.substr(close + 1);
    in6_addr address{};
    return inet_pton(AF_INET6, std::string(host.substr(1, close - 1)).c_str(), &address) == 1 &&
           !IsLinkLocal(address) && (rest.empty() || (rest[0] == ':' && IsPort(rest.substr(1))));
}

}  // namespace

bool IsHostNameOrIPv4(std::string_view host) {
    if (host.empty() || host.size() > kLongestHostName) {
        return false;
    }
    if (std::all_of(host.begin(), host.end(), [](char c) { return IsDigit(c) || c == '.'; })) {
        in_addr address{};
        return inet_pton(AF_INET, std::string(host).c_str(), &address) == 1;
    }
    while (true) {
        const std::size_t dot = host.find('.');
        if (!IsLabel(host.substr(0, dot))) {
            return false;
        }
        if (dot == std::string_view::npos) {
            return true;
        }
        host.remove_prefix(dot + 1);
    }
}

bool IsIPv6(std::string_view address) {
    in6_addr ignored{};
    return inet_pton(AF_INET6, std::string(address).c_str(), &ignored) == 1;
}

bool IsPathHost(std::string_view host) {
    if (!host.empty() && host[0] == '[') {
        return IsBracketedIPv6(host);
    }
    const std::size_t colon = host.find(':');
    return IsHostNameOrIPv4(host.substr(0, colon)) &&
           (colon == std::string_view::npos || IsPort(host.substr(colon + 1)));
}

}  // namespace Pegasus::kalvex::detail
