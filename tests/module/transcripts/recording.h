// What the module logs in a scenario, as text that is the same in every run.
#pragma once

#include <string>

#include "scenarios.h"

namespace transcripts {

/// Which constructor of Kalvex makes the object; the options are the default ones.
enum class Construction { kWithoutOptions, kWithOptions };

/// Plays the scenario against a simulated host on the network, on this thread. The transcript has
/// a line "> CALL" for each call, a line "LEVEL FILE TEXT" for each message during the call, and a
/// line "< RESULT". Control characters and backslashes of a text, and a blank at its end, stand
/// escaped; the host's port stands as PORT, a message's ID as ID.
std::string Record(const Scenario& scenario,
                   Construction construction = Construction::kWithoutOptions);

/// Where the transcript is kept, below `folder`.
std::string FileOf(const Scenario& scenario, const std::string& folder);

}  // namespace transcripts
