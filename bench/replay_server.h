// A server that answers every request with one prepared reply.
#pragma once

#include "reply_text.h"
#include "server_process.h"

namespace bench {

/// Answers over HTTP on 127.0.0.1, in chunks as hosts do, with the ID of the request's message.
/// Does nothing but sending, so that its process leaves the machine to the measured one. Its counts
/// are connections, requests and the segments that brought these.
std::unique_ptr<Service> MakeReplayServer(const ReplyText& reply);

/// Such a server in its process, with a reply of so many packages.
ServerProcess PackagesServer(std::size_t packages);

}  // namespace bench
