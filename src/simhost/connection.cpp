#include "simhost/connection.h"

#include <utility>

#include "simhost/base64.h"
#include "simhost/fault_acts.h"
#include "simhost/responder.h"
#include "simhost/text.h"

namespace simhost {

namespace {

/// Heads are small; no client sends this much.
constexpr std::size_t kMaxHead = 1 << 16;

Request Record(const HttpHead& head, std::string body, const CimRequest& cim, bool authorised,
               std::size_t connection) {
    Request request;
    request.operation = cim.operation;
    request.name_space = cim.name_space;
    request.class_name = cim.class_name;
    request.source_path = cim.source ? cim.source->Text() : "";
    request.association_class = cim.association_class;
    request.result_class = cim.result_class;
    request.authorised = authorised;
    request.connection = connection;
    request.head = head.text();
    request.body = std::move(body);
    return request;
}

}  // namespace

ServerContext::ServerContext(ServerOptions server_options, const std::string& host_name,
                             Journal::Keeps journal_keeps)
    : options(std::move(server_options)),
      tls(options.transport == Transport::kHttps ? std::make_unique<TlsContext>(options, host_name)
                                                 : nullptr),
      authorization(options.user.empty() ? "" : Base64(options.user + ":" + options.password)),
      journal(journal_keeps) {}

Connection::Connection(ServerContext& server, ServedHost& host, std::size_t number,
                       NativeSocket accepted)
    : server_(server), host_(host), number_(number), stream_(accepted), thread_([this] {
          Serve();
      }) {}

Connection::~Connection() {
    stream_.Stop();
    thread_.join();
}

void Connection::Serve() {
    try {
        if (Open()) {
            ServeRequests();
        }
    } catch (const ConnectionEnded&) {
        stream_.Close();
    }
    finished_ = true;
}

/// Takes up the connection, with TLS where it is spoken. Gives false when it is over already.
bool Connection::Open() {
    struct SettleAtEnd {
        explicit SettleAtEnd(Journal& its_journal) : journal(its_journal) {}
        ~SettleAtEnd() { journal.Settled(); }
        Journal& journal;
    };
    std::optional<SettleAtEnd> settle(std::in_place, server_.journal);
    if (const auto fault = host_.faults.ForConnection()) {
        settle.reset();
        ApplyOnConnect(*fault, stream_);
        return false;
    }
    if (server_.tls == nullptr) {
        settle.reset();
    }
    stream_.Pause(server_.options.round_trip_delay);
    if (server_.tls != nullptr) {
        stream_.Pause(server_.options.round_trip_delay);
        server_.journal.Handshaken(stream_.StartTls(*server_.tls));
    }
    return true;
}

void Connection::ServeRequests() {
    while (const auto head = ReceiveHead()) {
        if (!ServeRequest(*head)) {
            return;
        }
    }
    stream_.CloseProperly();
}

bool Connection::ServeRequest(const HttpHead& head) {
    if (const auto refusal = Refusal(head)) {
        server_.journal.Requested(Record(head, "", {}, Authorised(head), number_));
        Send(*refusal);
        stream_.CloseProperly();
        return false;
    }
    std::string body = ReceiveBody(*ContentLength(head));
    const auto leaves = Stream::Clock::now() + server_.options.round_trip_delay;
    ++requests_;
    const CimRequestResult read = ReadCimRequest(body);
    const bool authorised = Authorised(head);
    server_.journal.Requested(Record(head, std::move(body), read.request, authorised, number_));

    Answer answer = authorised ? Respond(Variant(), head, read) : Challenge();
    answer.chunk_size = server_.options.chunk_size;
    const auto fault =
        authorised ? host_.faults.ForRequest(read.request.operation, read.request.class_name)
                   : std::nullopt;
    if (fault) {
        ApplyToAnswer(*fault,
                      {read.request, requests_, number_, head.Header("Authorization").value_or("")},
                      answer);
    }
    if (!answer.close && IsLast(head)) {
        answer.close = true;
        answer.SetHeader("Connection", server_.options.announce_close ? "close" : "");
    }
    stream_.PauseUntil(leaves);
    if (fault && !ApplyToSending(*fault, answer, stream_)) {
        return false;
    }
    if (!fault) {
        Send(answer);
    }
    if (answer.close) {
        stream_.CloseProperly();
    }
    return !answer.close;
}

/// Nothing when the client has been idle for too long, or sends no head.
std::optional<HttpHead> Connection::ReceiveHead() {
    const std::string end_of_head = "\r\n\r\n";
    for (;;) {
        const auto end = received_.find(end_of_head);
        if (end != std::string::npos) {
            HttpHead head(received_.substr(0, end + end_of_head.size()));
            received_.erase(0, end + end_of_head.size());
            return head;
        }
        const std::string_view arrived = stream_.Read(server_.options.idle_limit);
        if (arrived.empty() || received_.size() > kMaxHead) {
            return std::nullopt;
        }
        received_ += arrived;
    }
}

std::string Connection::ReceiveBody(std::size_t length) {
    while (received_.size() < length) {
        received_ += stream_.Read();
    }
    std::string body = received_.substr(0, length);
    received_.erase(0, length);
    return body;
}

const HostVariant& Connection::Variant() {
    return variant_ ? *variant_ : variant_.emplace(host_.Variant());
}

bool Connection::Authorised(const HttpHead& head) const {
    if (host_.refuses_everyone) {
        return false;
    }
    const std::string_view given = head.Header("Authorization").value_or("");
    const auto blank = given.find(' ');
    return server_.authorization.empty() ||
           (EqualIgnoringCase(given.substr(0, blank), "Basic") && blank != std::string::npos &&
            Trimmed(given.substr(blank)) == server_.authorization);
}

Answer Connection::Challenge() const {
    server_.journal.Challenged();
    Answer answer = EmptyAnswer(401, "Unauthorized");
    answer.SetHeader("WWW-Authenticate", server_.options.challenge);
    return answer;
}

bool Connection::IsLast(const HttpHead& head) const {
    const std::size_t limit = server_.options.requests_per_connection;
    const bool stays = head.is_http_1_1() ? !head.HeaderHas("Connection", "close")
                                          : head.HeaderHas("Connection", "keep-alive");
    return !stays || (limit != 0 && requests_ >= limit);
}

void Connection::Send(const Answer& answer) {
    WriteAnswer(answer, [&](std::string_view bytes) {
        stream_.Write(bytes);
        return true;
    });
}

}  // namespace simhost
