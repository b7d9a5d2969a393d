// The reply that the decoding figures read: the installed packages of a host that has many.
#pragma once

#include <cstddef>
#include <string>

namespace bench {

/// An EnumerateInstances reply of `instances` instances, about 1.48 kB each, of 11 properties, two
/// of which are arrays. The text up to the message's ID, and the text after it.
struct ReplyText {
    std::string before_id;
    std::string after_id;

    std::string WithId(const std::string& id) const { return before_id + id + after_id; }
};

ReplyText PackagesReply(std::size_t instances);

}  // namespace bench
