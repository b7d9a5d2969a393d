// The works that are measured, each as it would be done by a program that uses the client.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace bench {

/// Reads one reply through the CIM client, and the text of every property. Returns how many
/// instances there were.
class DecodeWork {
public:
    explicit DecodeWork(std::uint16_t port);
    ~DecodeWork();
    DecodeWork(const DecodeWork&) = delete;
    DecodeWork& operator=(const DecodeWork&) = delete;

    /// Seconds of processor time from the request to the last text.
    double Run(std::size_t instances);

private:
    struct Client;
    Client* client_;
};

/// Parses the reply in place into a document tree, nothing else. Seconds of processor time.
double RunParse(std::string body);

}  // namespace bench
