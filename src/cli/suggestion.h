// What somebody may have meant by a word that is not known.
#pragma once

#include <string>
#include <vector>

namespace command {

/// How many letters have to be inserted, dropped, replaced or swapped with their neighbour to make
/// one word of the other.
std::size_t EditDistance(const std::string& a, const std::string& b);

/// " (did you mean NEAREST?)", or nothing when none is near enough.
std::string DidYouMean(const std::string& word, const std::vector<std::string>& known);

}  // namespace command
