// How faults are carried out.
#pragma once

#include <cstddef>
#include <string_view>
#include <variant>

#include "simhost/answer.h"
#include "simhost/cim_request.h"
#include "simhost/fault.h"
#include "simhost/stream.h"

namespace simhost {

/// Takes the place of all that a connection is for, before its first byte is read. The connection
/// is over afterwards.
using ActOnConnect = void (*)(const Fault&, Stream&);

/// A request, and its place: on its connection, from 1, and that one's number.
struct NumberedRequest {
    const CimRequest& request;
    std::size_t number;
    std::size_t connection;
    std::string_view authorization;  ///< the value of its field
};
/// Makes an answer wrong before it is sent.
using ActOnAnswer = void (*)(const Fault&, const NumberedRequest&, Answer&);

/// Takes the place of sending an answer. Gives false when the connection is over.
using ActOnSending = bool (*)(const Fault&, const Answer&, Stream&);

using Act = std::variant<ActOnConnect, ActOnAnswer, ActOnSending>;

/// What faults of this kind do: never null.
Act ActOf(Fault::Kind kind);

bool ActsOnConnect(Fault::Kind kind);

/// Only for kinds that act on connect.
void ApplyOnConnect(const Fault& fault, Stream& stream);

/// Leaves the answer alone when the kind acts at another time.
void ApplyToAnswer(const Fault& fault, const NumberedRequest& request, Answer& answer);

/// Sends the answer as it is when the kind acts at another time. Gives false when the connection
/// is over.
bool ApplyToSending(const Fault& fault, const Answer& answer, Stream& stream);

}  // namespace simhost
