// A reply as HTTP carried it.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "common/text/ascii.h"

namespace cimclient {

/// Header lines in order; names compare without regard to case.
class HeaderFields {
public:
    void Add(std::string_view line);
    /// The first field's value, or null. A field of the HTTP extension framework, whose name has a
    /// two-digit prefix, counts as well.
    const std::string* Find(std::string_view name) const;
    std::string ValueOr(std::string_view name, const char* otherwise) const;
    std::vector<std::string> All(std::string_view name) const;

private:
    std::vector<std::pair<std::string, std::string>> fields_;
};

struct HttpReply {
    bool is_http_1_0 = false;
    unsigned status = 0;
    std::string reason;
    HeaderFields headers;
    HeaderFields trailers;
    /// The connection can carry another request.
    bool keeps_alive = true;
    /// The stream did not end before the last chunk, with its trailers.
    bool has_last_chunk = true;
};

/// "%41" becomes "A"; other texts stay.
std::string PercentDecoded(std::string_view text);

}  // namespace cimclient
