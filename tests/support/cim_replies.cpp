#include "support/cim_replies.h"

#include <cstdio>

namespace support {

namespace {

std::string Lines(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += line + "\r\n";
    }
    return text;
}

std::string LengthOf(const std::string& body) {
    return "Content-Length: " + std::to_string(body.size());
}

/// A chunk must not cut the place of the message ID in two.
std::size_t ChunkSize(const std::string& body, std::size_t at, std::size_t size) {
    const std::string id = "@ID@";
    const std::size_t id_at = body.find(id, at);
    const std::size_t end = at + size;
    return id_at < end && end < id_at + id.size() ? id_at + id.size() - at : size;
}

}  // namespace

std::string Body(const std::string& content, const std::string& operation) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n"
           "<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\">\n"
           "<MESSAGE ID=\"@ID@\" PROTOCOLVERSION=\"1.0\">\n"
           "<SIMPLERSP>\n"
           "<IMETHODRESPONSE NAME=\"" +
           operation + "\">\n" + content + "\n</IMETHODRESPONSE></SIMPLERSP></MESSAGE></CIM>\n";
}

std::string BodyReturning(const std::string& content, const std::string& operation) {
    return Body("<IRETURNVALUE>" + content + "</IRETURNVALUE>", operation);
}

std::string NamedInstance(const std::string& key, const std::string& properties) {
    return "<VALUE.NAMEDINSTANCE><INSTANCENAME CLASSNAME=\"X\"><KEYBINDING NAME=\"k\">"
           "<KEYVALUE VALUETYPE=\"string\">" +
           key + "</KEYVALUE></KEYBINDING></INSTANCENAME><INSTANCE CLASSNAME=\"X\">" + properties +
           "</INSTANCE></VALUE.NAMEDINSTANCE>";
}

std::string Reply(const std::string& status, const std::vector<std::string>& headers,
                  const std::string& body) {
    return "HTTP/1.1 " + status + "\r\n" + Lines(headers) + "\r\n" + body;
}

std::string AnswerHead(const std::vector<std::string>& headers) {
    std::vector<std::string> all = {"Content-Type: application/xml; charset=utf-8",
                                    "CIMOperation: MethodResponse"};
    all.insert(all.end(), headers.begin(), headers.end());
    return Reply("200 OK", all, "");
}

std::string Answer(const std::string& body, const std::vector<std::string>& headers) {
    std::vector<std::string> all = headers;
    all.push_back(LengthOf(body));
    return AnswerHead(all) + body;
}

std::string AnswerOf(int count, const std::vector<std::string>& headers) {
    std::string instances;
    for (int i = 0; i < count; ++i) {
        instances += NamedInstance(std::to_string(i));
    }
    return Answer(BodyReturning(instances), headers);
}

std::string Chunked(const std::string& body, std::size_t size,
                    const std::vector<std::string>& trailer) {
    std::string text;
    for (std::size_t at = 0; at < body.size();) {
        const std::string chunk = body.substr(at, ChunkSize(body, at, size));
        char length[32];
        std::snprintf(length, sizeof length, "%zx\r\n", chunk.size());
        text += length + chunk + "\r\n";
        at += chunk.size();
    }
    return text + "0\r\n" + Lines(trailer) + "\r\n";
}

std::string ChunkedAnswer(const std::string& body, const std::vector<std::string>& trailer) {
    return AnswerHead({"Transfer-Encoding: chunked"}) + Chunked(body, body.size(), trailer);
}

std::string Challenge(const std::vector<std::string>& headers) {
    std::vector<std::string> all = headers;
    all.push_back(LengthOf(""));
    return Reply("401 Unauthorized", all, "");
}

std::string Challenge() { return Challenge({"WWW-Authenticate: Basic realm=\"cimom\""}); }

}  // namespace support
