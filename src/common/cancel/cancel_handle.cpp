#include "common/cancel/cancel_handle.h"

#include "common/cancel/cancellation.h"

namespace Zentar {

CancelHandle CancelHandle::Make() {
    CancelHandle handle;
    handle.state_ = std::make_shared<Cancellation>();
    return handle;
}

void CancelHandle::Cancel() const {
    if (state_) {
        state_->Cancel();
    }
}

bool CancelHandle::IsCancelled() const { return state_ && state_->IsCancelled(); }

}  // namespace Zentar
