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

/// Attributes of one element; the most that DSP0201 knows is far below.
constexpr std::size_t kMaxXmlAttributes = 256;

/// Elements of one array.
constexpr std::size_t kMaxArrayElements = 1'000'000;

/// References in the keys of references. Each level may double the text of the one within.
constexpr int kMaxReferenceDepth = 3;

/// The text of a reference that is a key.
constexpr std::size_t kMaxReferenceBytes = 64UL * 1024;

/// The text of an embedded object, in which a quotation mark grows with each level.
constexpr std::size_t kMaxObjectTextBytes = 64UL * 1024 * 1024;

/// Embedded objects within embedded objects.
constexpr int kMaxEmbeddingDepth = 16;

}  // namespace cimclient
