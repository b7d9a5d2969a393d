#include "simhost/responder.h"

#include "simhost/operations.h"
#include "simhost/text.h"

namespace simhost {

namespace {

/// Requests are small; no client sends this much.
constexpr std::size_t kMaxBody = 1 << 20;

constexpr const char* kTrailerNames = "CIMStatusCode, CIMStatusCodeDescription, Content-Language";

Answer CimAnswer(const CimRequest& request, const std::string& content) {
    const std::string method = request.intrinsic ? "IMETHODRESPONSE" : "METHODRESPONSE";
    Answer answer;
    answer.headers = {{"Content-Type", "application/xml; charset=utf-8"},
                      {"CIMOperation", "MethodResponse"}};
    answer.body =
        "<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n"
        "<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\">\n"
        "<MESSAGE ID=\"" +
        XmlText(request.message_id) + "\" PROTOCOLVERSION=\"1.0\">\n<SIMPLERSP>\n<" + method +
        " NAME=\"" + XmlText(request.operation) + "\">\n" + content + "</" + method +
        ">\n</SIMPLERSP>\n</MESSAGE>\n</CIM>\n";
    return answer;
}

Answer ChunkedCimAnswer(const CimRequest& request, const std::string& content) {
    Answer answer = CimAnswer(request, content);
    answer.chunked = true;
    answer.headers.emplace_back("Trailer", kTrailerNames);
    return answer;
}

Answer BadRequest(const std::string& cim_error) {
    return EmptyAnswer(400, "Bad Request", {{"CIMError", cim_error}});
}

/// Whether the headers that describe the operation agree with it. Older clients prefix their names
/// with a number, which is not looked into.
bool HeadersAgree(const HttpHead& head, const CimRequest& request) {
    const auto method = head.Header("CIMMethod");
    const auto object = head.Header("CIMObject");
    return (!method || EqualIgnoringCase(*method, request.operation)) &&
           (!object || EqualIgnoringCase(PercentDecoded(*object), request.name_space) ||
            !request.intrinsic);
}

}  // namespace

std::optional<Answer> Refusal(const HttpHead& head) {
    const auto refuse = [](int status, const char* reason, Answer::Headers headers = {}) {
        Answer answer = EmptyAnswer(status, reason, std::move(headers));
        answer.SetHeader("Connection", "close");
        answer.close = true;
        return answer;
    };
    if (!head.well_formed()) {
        return refuse(400, "Bad Request");
    }
    if (head.method() == "GET" || head.method() == "HEAD") {
        return refuse(405, "Method Not Allowed", {{"Allow", "POST"}});
    }
    if (head.method() != "POST") {
        return refuse(501, "Not Implemented");
    }
    if (head.target() != "/cimom") {
        return refuse(404, "Not Found");
    }
    if (head.Header("Transfer-Encoding") || !head.Header("Content-Length")) {
        return refuse(411, "Length Required");
    }
    const auto length = ContentLength(head);
    if (!length) {
        return refuse(400, "Bad Request");
    }
    return *length > kMaxBody ? std::optional(refuse(413, "Request Entity Too Large"))
                              : std::nullopt;
}

Answer Respond(const HostVariant& host, const HttpHead& head, const CimRequestResult& read) {
    const CimRequest& request = read.request;
    if (read.error == "multiple-requests-unsupported") {
        return EmptyAnswer(501, "Not Implemented", {{"CIMError", read.error}});
    }
    if (!read.error.empty()) {
        return BadRequest(read.error);
    }
    if (!EqualIgnoringCase(head.Header("CIMOperation").value_or(""), "MethodCall")) {
        return BadRequest("unsupported-operation");
    }
    if (!HeadersAgree(head, request)) {
        return BadRequest("header-mismatch");
    }
    const bool trailers = head.is_http_1_1() && head.HeaderHas("TE", "trailers");
    const OperationResult result = Perform(host, request);
    if (const auto* error = std::get_if<CimError>(&result)) {
        if (!trailers) {
            return ErrorElementAnswer(request, error->code, error->description);
        }
        Answer answer = ChunkedCimAnswer(request, "");
        AddErrorTrailers(error->code, error->description, answer);
        return answer;
    }
    const std::string& elements = std::get<std::string>(result);
    const std::string content =
        elements.empty() ? "" : "<IRETURNVALUE>\n" + elements + "</IRETURNVALUE>\n";
    return trailers ? ChunkedCimAnswer(request, content) : CimAnswer(request, content);
}

Answer ErrorElementAnswer(const CimRequest& request, unsigned code,
                          const std::string& description) {
    return CimAnswer(request, "<ERROR CODE=\"" + std::to_string(code) + "\" DESCRIPTION=\"" +
                                  XmlText(description) + "\">\n</ERROR>\n");
}

void AddErrorTrailers(unsigned code, const std::string& description, Answer& answer) {
    answer.chunked = true;
    answer.SetHeader("Trailer", kTrailerNames);
    answer.trailers = {{"CIMStatusCode", std::to_string(code)},
                       {"CIMStatusCodeDescription", PercentEncoded(description)}};
}

}  // namespace simhost
