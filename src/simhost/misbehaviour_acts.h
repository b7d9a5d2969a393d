// How misbehaviours are carried out.
#pragma once

#include "simhost/answer.h"
#include "simhost/cim_request.h"
#include "simhost/misbehaviour.h"
#include "simhost/stream.h"

namespace simhost {

/// Before the first byte of a connection is read, which is over afterwards.
void MisbehaveOnConnect(const Misbehaviour& misbehaviour, Stream& stream);

/// Makes the answer wrong, where the misbehaviour is of that sort.
/// `request_number` is the request's place on its connection, from 1.
void Spoil(const Misbehaviour& misbehaviour, const CimRequest& request, std::size_t request_number,
           Answer& answer);

/// Sends the answer, or does what the misbehaviour does instead. Gives false when the connection
/// is over.
bool SendMisbehaving(const Misbehaviour& misbehaviour, const Answer& answer, Stream& stream);

}  // namespace simhost
