// Documents as they come, one a line.
#pragma once

#include <functional>
#include <string>

#include "fleet/run.h"

namespace fleet {

/// Writes whole lines to a descriptor, which it does not own. What cannot be written is reported
/// once.
class NdjsonOutput : public DocumentSink {
public:
    /// `failed` is called with the reason, once, on the thread that met it.
    NdjsonOutput(int descriptor, std::function<void(const std::string&)> failed);
    void Take(const HostEntry& entry, const inventory::Document& document) override;

private:
    const int descriptor_;
    const std::function<void(const std::string&)> failed_;
    bool has_failed_ = false;
};

}  // namespace fleet
