// A server that plays a script, byte for byte, and records what it was sent.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "support/scripted_tls.h"

namespace support {

class ScriptedLink;

/// A request as it came over the wire.
struct RecordedRequest {
    std::size_t connection = 0;  ///< counted from 0
    std::string head;            ///< with the blank line at its end
    std::string body;

    /// The value of a header line, empty when there is none of this very name.
    std::string Header(const std::string& name) const;
    std::string MessageId() const;
};

/// One thing that the server does on a connection.
struct Step {
    enum Kind {
        kAwaitRequest,    ///< reads and records one whole request
        kAwaitByte,       ///< reads one byte, no more
        kSend,            ///< sends the text; @ID@ in it becomes the last request's message ID
        kDrip,            ///< sends the text's last byte again and again until the client hangs up
        kFlood,           ///< sends the text over and over until the client hangs up
        kSendTickets,     ///< sends so many session tickets of TLS 1.3
        kSendKeyUpdates,  ///< the same with key updates
        kAskForKeyUpdates,  ///< the same with key updates that want one in return
        kSendRecords,       ///< sends the record so many times, sealed by the server itself
        kSendInRecords,     ///< sends the text in records of so many bytes
        kAwaitDelivery,     ///< waits until all that was sent has reached the client
        kAwaitCue,          ///< waits for ScriptedServer::Cue
        kClose,             ///< closes the connection as is proper
        kDrop,              ///< closes the TCP connection without a word of TLS
        kReset,             ///< resets the TCP connection
    };
    Kind kind;
    std::string text;
    int count = 0;
    TlsRecord record = {};
};

Step AwaitRequest();
Step AwaitByte();
Step Send(std::string text);
Step Drip(std::string text);
Step Flood(std::string text);
/// Fewer when the client hangs up.
Step SendTickets(int count);
Step SendKeyUpdates(int count);
Step AskForKeyUpdates(int count);
/// From the first on nothing else may be sent on the connection; TlsOptions::seals_own_records.
Step SendRecords(TlsRecord record, int count = 1);
/// @ID@ as with Send.
Step SendInRecords(std::string text, int size);
Step AwaitDelivery();
Step AwaitCue();
Step Close();
Step Drop();
Step Reset();

/// What happens on one connection. After its last step the server listens, and says nothing more,
/// until the client hangs up.
using Conversation = std::vector<Step>;

/// One request is awaited before each reply is sent.
Conversation Replies(const std::vector<std::string>& replies);
/// Further steps after those of a conversation.
Conversation operator+(Conversation first, const Conversation& second);

/// Serves on a port of 127.0.0.1 from construction to destruction. The n-th connection is given the
/// n-th conversation; a connection for which there is none is closed at once.
class ScriptedServer {
public:
    explicit ScriptedServer(std::vector<Conversation> conversations);
    ScriptedServer(std::vector<Conversation> conversations, const TlsOptions& tls);
    ~ScriptedServer();
    ScriptedServer(const ScriptedServer&) = delete;
    ScriptedServer& operator=(const ScriptedServer&) = delete;

    std::uint16_t port() const { return port_; }

    std::vector<RecordedRequest> requests() const;
    /// What each of the first `count` connections had of TLS; waits until their handshakes are
    /// over.
    std::vector<TlsSeen> AwaitHandshakes(std::size_t count) const;
    std::size_t connections() const;

    /// Lets one kAwaitCue step pass.
    void Cue();
    /// Waits until the n-th connection has gone through its steps.
    void AwaitEndOf(std::size_t connection) const;
    /// Waits until the client has hung up on the n-th connection.
    void AwaitHangUp(std::size_t connection) const;

private:
    void Listen();
    void Accept();
    void Converse(int socket, std::size_t connection);
    void Perform(ScriptedLink& link, const Step& step, RecordedRequest& last);
    void PassCue();
    void Count(std::map<std::size_t, bool>& done, std::size_t connection);
    void AwaitOrFail(const std::function<bool()>& condition) const;

    std::vector<Conversation> conversations_;
    std::shared_ptr<TlsServerContext> tls_;
    int listener_ = -1;
    int stop_ = -1;
    std::uint16_t port_ = 0;

    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    std::vector<RecordedRequest> requests_;
    std::map<std::size_t, TlsSeen> handshakes_;
    std::map<std::size_t, bool> ended_;
    std::map<std::size_t, bool> hung_up_;
    std::size_t connections_ = 0;
    int cues_ = 0;
    bool stopping_ = false;

    std::vector<std::thread> conversing_;
    std::thread accepting_;
};

}  // namespace support
