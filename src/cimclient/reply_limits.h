// What a host may make this client hold or do.
#pragma once

#include <cstddef>

namespace cimclient {

/// A whole reply, head and body, unless ClientSettings say otherwise. Those of real hosts stay under
/// 20 MB.
constexpr std::size_t kMaxReplyBytes = 64UL * 1024 * 1024;

/// What is made of a reply may take so many bytes of memory for each of its bytes that has come, the
/// texts of its embedded objects included. Those of real hosts take one or two.
constexpr std::size_t kMemoryPerReplyByte = 4;
/// And so many besides. With what is not counted, such as the head and the connection's buffers, it
/// is less than 32 MiB.
constexpr std::size_t kMemoryBesides = 20UL * 1024 * 1024;

/// A reply's head, and its trailer.
constexpr std::size_t kMaxHeadBytes = 1024UL * 1024;

/// Lines of either.
constexpr std::size_t kMaxHeadLines = 1000;

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

/// The name of a host or a namespace in a path.
constexpr std::size_t kMaxPlaceBytes = 64UL * 1024;

/// What a message quotes of a reply. Messages are shortened further where they leave the client.
constexpr std::size_t kMaxQuotedBytes = 64UL * 1024;

/// Embedded objects within embedded objects.
constexpr int kMaxEmbeddingDepth = 16;

}  // namespace cimclient
