// A host that answers with prepared bytes, whatever they are.
#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace fuzz {

/// The texts between the separators, which stand on lines of their own.
inline constexpr std::string_view kReplySeparator = "\n=====\n";
std::vector<std::string> SplitReplies(std::string_view text);

/// The first of these in a reply becomes what the request's Authorization field says after "Basic "
/// when it is as long.
inline constexpr std::string_view kEchoPlace = "@@@@@@@@@@@@@@@@@@@@@@@@";

/// Listens on a port of 127.0.0.1 from construction to destruction. After each reply it ends the
/// connection's stream, so that no client waits for more.
class ReplayingHost {
public:
    ReplayingHost();
    ~ReplayingHost();
    ReplayingHost(const ReplayingHost&) = delete;
    ReplayingHost& operator=(const ReplayingHost&) = delete;

    std::uint16_t port() const { return port_; }

    /// The replies to the requests from now on, the last of them to all further ones. In each the
    /// first `ID="1000"` with six blanks after it gets the request's message ID, which leaves the
    /// reply's length as it is.
    void Answer(std::vector<std::string> replies);
    /// Bytes that were sent since then.
    std::size_t Sent() const;

private:
    void Serve();
    void Accept();
    void Hear(int socket);
    std::string NextReply(std::string_view request);

    int listener_ = -1;
    int stop_ = -1;
    std::uint16_t port_ = 0;
    mutable std::mutex mutex_;
    std::vector<std::string> replies_;
    std::size_t answered_ = 0;
    std::size_t sent_ = 0;
    std::map<int, std::string> requests_;  ///< what has come of one on each connection
    std::thread serving_;
};

}  // namespace fuzz
