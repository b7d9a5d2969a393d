// The answer to one HTTP request, as a host that works gives it.
#pragma once

#include <optional>

#include "simhost/answer.h"
#include "simhost/cim_request.h"
#include "simhost/host_variant.h"
#include "simhost/http_message.h"

namespace simhost {

/// What is wrong with a request by its head alone, as the answer that says so; that answer ends the
/// connection, as the body stays unread.
std::optional<Answer> Refusal(const HttpHead& head);

/// Answers a POST whose body has been read.
Answer Respond(const HostVariant& host, const HttpHead& head, const CimRequestResult& read);

/// A CIM error as an ERROR element; the length is known, so nothing is chunked.
Answer ErrorElementAnswer(const CimRequest& request, unsigned code, const std::string& description);

/// Makes a chunked answer report a CIM error in its trailers.
void AddErrorTrailers(unsigned code, const std::string& description, Answer& answer);

}  // namespace simhost
