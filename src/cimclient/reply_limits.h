// What a host may make this client hold or do.
#pragma once

#include <cstddef>

namespace cimclient {

/// A whole reply, head and body.
constexpr std::size_t kMaxReplyBytes = 256UL * 1024 * 1024;

/// A reply's head, and its trailer.
constexpr std::size_t kMaxHeadBytes = 1024UL * 1024;

/// Elements within elements.
constexpr std::size_t kMaxXmlDepth = 128;

/// Embedded objects within embedded objects.
constexpr int kMaxEmbeddingDepth = 16;

}  // namespace cimclient
