#include "http/request_head.h"

#include <cstdio>
#include <string_view>

#include "common/text/ascii.h"

namespace cimclient {

namespace {

bool IsUnreserved(char c) {
    return Zentar::IsLetter(c) || Zentar::IsDigit(c) || c == '-' || c == '_' || c == '.' ||
           c == '~';
}

std::string PercentEncoded(std::string_view text) {
    std::string encoded;
    for (const char c : text) {
        if (IsUnreserved(c)) {
            encoded += c;
        } else {
            char escape[4];
            std::snprintf(escape, sizeof escape, "%%%02X", static_cast<unsigned char>(c));
            encoded += escape;
        }
    }
    return encoded;
}

/// All but the credentials, without the blank line after the head.
std::string PublicFields(const RequestHead& head, std::size_t body_bytes) {
    char length[32];
    std::snprintf(length, sizeof length, "%010zu", body_bytes);
    return "POST /cimom HTTP/1.1\r\nHOST: " + head.host +
           "\r\nContent-Type: application/xml; charset=utf-8\r\ncontent-length: " + length +
           "\r\nTE: chunked, trailers\r\nCIMOperation: MethodCall\r\nCIMMethod: " + head.method +
           "\r\nCIMObject: " + PercentEncoded(head.object) + "\r\n";
}

}  // namespace

Zentar::Secret WriteHttpRequest(const RequestHead& head, std::string_view body) {
    const std::string fields = PublicFields(head, body.size());
    if (head.authorization.empty()) {
        return {fields, "\r\n", body};
    }
    return {fields, "Authorization: ", head.authorization, "\r\n\r\n", body};
}

}  // namespace cimclient
