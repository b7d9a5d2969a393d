// How misbehaviours are carried out.
#pragma once

#include <cstddef>
#include <variant>

#include "simhost/answer.h"
#include "simhost/cim_request.h"
#include "simhost/misbehaviour.h"
#include "simhost/stream.h"

namespace simhost {

/// Takes the place of all that a connection is for, before its first byte is read. The connection
/// is over afterwards.
using ActOnConnect = void (*)(const Misbehaviour&, Stream&);

/// A request, and its place on its connection, from 1.
struct NumberedRequest {
    const CimRequest& request;
    std::size_t number;
};
/// Makes an answer wrong before it is sent.
using ActOnAnswer = void (*)(const Misbehaviour&, const NumberedRequest&, Answer&);

/// Takes the place of sending an answer. Gives false when the connection is over.
using ActOnSending = bool (*)(const Misbehaviour&, const Answer&, Stream&);

using Act = std::variant<ActOnConnect, ActOnAnswer, ActOnSending>;

/// What misbehaviours of this kind do: never null.
Act ActOf(Misbehaviour::Kind kind);

bool ActsOnConnect(Misbehaviour::Kind kind);

/// Only for kinds that act on connect.
void ApplyOnConnect(const Misbehaviour& misbehaviour, Stream& stream);

/// Leaves the answer alone when the kind acts at another time.
void ApplyToAnswer(const Misbehaviour& misbehaviour, const NumberedRequest& request,
                   Answer& answer);

/// Sends the answer as it is when the kind acts at another time. Gives false when the connection
/// is over.
bool ApplyToSending(const Misbehaviour& misbehaviour, const Answer& answer, Stream& stream);

}  // namespace simhost
