// An installed OpenPegasus: nothing beyond the API that every client offers. Cancelling and the
// deadline take effect between its requests, and memory alone bounds its replies.
#include "common/cimom/src/client_seam.h"
#include "common/cimom/src/exception_causes.h"

namespace Zentar {

bool ClientTestsTrust() { return false; }

void PrepareClient(Pegasus::CIMClient&, const ZentarConnection::ConnectionOptions&,
                   const std::shared_ptr<Cancellation>&) {}

Failure CauseOf(const Pegasus::Exception& exception) { return CauseByClass(exception); }

}  // namespace Zentar
