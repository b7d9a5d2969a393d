// Which hosts a fleet has: a CSV file with a header line, or a plain list of names.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

namespace fleet {

/// How to reach one host.
struct HostEntry {
    std::string host;  ///< name or address, without brackets
    std::uint16_t port = 0;
    bool has_tls = true;
    std::string user;
    std::string password_file;  ///< empty: the password that is common to all
    std::string ca_file;
    std::vector<std::string> fingerprints;
    std::size_t line = 0;  ///< of the list, from 1

    /// "esx01:5989", or "[::1]:5989": what makes it one host.
    std::string Name() const;
};

/// A line that cannot be used.
struct ListProblem {
    std::size_t line = 0;
    std::string text;  ///< for people: what is wrong, and what to do
};

struct HostList {
    std::vector<HostEntry> hosts;
    std::vector<ListProblem> problems;
};

/// What a line does not say. `port` 0 stands for the usual one of the transport: 5989 with TLS,
/// 5988 without.
struct HostDefaults {
    std::uint16_t port = 0;
    bool has_tls = true;
    std::string user;
    std::string password_file;
    std::string ca_file;
    std::vector<std::string> fingerprints;
};

/// Reads a CSV file (RFC 4180) whose header line names the columns `host`, `port`, `transport`,
/// `user`, `password_file`, `ca_file`, `fingerprint`, of which only `host` must be there; or a list
/// of "name", "name:port", "[::1]:5989" or "::1", one a line. Blank lines and those that begin with
/// `#` are passed over. Empty cells stand for the defaults. The same host and port twice is a
/// problem.
HostList ReadHostList(std::istream& in, const HostDefaults& defaults);

/// The `index`-th of every `count` hosts, from 1.
std::vector<HostEntry> ShardOf(const std::vector<HostEntry>& hosts, std::size_t index,
                               std::size_t count);

}  // namespace fleet
