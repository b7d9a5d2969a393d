// What each kind of failure means, and what to try, in words for people.
#pragma once

#include <string>

#include "common/records/failure.h"

namespace inventory {

struct FailureMeaning {
    const char* meaning;  ///< what happened, as the part of a sentence
    const char* advice;   ///< what to try, likewise
};

/// Every kind has both.
FailureMeaning MeaningOf(Zentar::FailureKind kind);

/// "MEANING (while PHASE: TEXT)", as far as there are phase and text. The text is the host's words
/// in part, as they came.
std::string DescribeFailure(const Zentar::Failure& failure);

}  // namespace inventory
