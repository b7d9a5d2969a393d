#include "http/request_head.h"

#include <cstdio>
#include <string_view>

namespace cimclient {

namespace {

bool IsUnreserved(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '_' || c == '.' || c == '~';
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

}  // namespace

std::string WriteHead(const RequestHead& head) {
    char length[32];
    std::snprintf(length, sizeof length, "%010zu", head.body_bytes);
    std::string text =
        "POST /cimom HTTP/1.1\r\nHOST: " + head.host +
        "\r\nContent-Type: application/xml; charset=utf-8\r\ncontent-length: " + length +
        "\r\nTE: chunked, trailers\r\nCIMOperation: MethodCall\r\nCIMMethod: " + head.method +
        "\r\nCIMObject: " + PercentEncoded(head.object) + "\r\n";
    if (!head.authorization.empty()) {
        text += "Authorization: " + head.authorization + "\r\n";
    }
    return text + "\r\n";
}

}  // namespace cimclient
