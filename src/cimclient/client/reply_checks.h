// What a reply's head and trailer must say before its body counts (DSP0200).
#pragma once

#include "http/reply.h"

namespace cimclient {

/// Throws CIMClientHTTPErrorException for any status but 200.
void CheckStatus(const HttpReply& reply);

/// Throws HttpError, or StatusError for an error reported in the head.
void CheckHeaders(const HttpReply& reply);

/// Throws StatusError or CIMClientHTTPErrorException for an error reported after the body, and
/// HttpError for one whose code cannot be read.
void CheckTrailers(const HttpReply& reply);

}  // namespace cimclient
