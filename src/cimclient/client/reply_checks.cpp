#include "client/reply_checks.h"

#include <algorithm>
#include <optional>

#include "Pegasus/Client/CIMClientException.h"
#include "client/failures.h"
#include "common/text/number.h"
#include "common/text/utf8.h"
#include "reply_errors.h"

namespace cimclient {

namespace {

using namespace Pegasus;

String Decoded(const HeaderFields& fields, std::string_view name) {
    return String::FromUtf8(Zentar::RepairedUtf8(PercentDecoded(fields.ValueOr(name, ""))));
}

String Text(const HeaderFields& fields, std::string_view name) {
    return String::FromUtf8(fields.ValueOr(name, ""));
}

[[noreturn]] void FailMalformed(const std::string& message) {
    throw HttpError{message, Zentar::FailureKind::kNotCimServer};
}

void ThrowReportedError(const HeaderFields& fields) {
    const auto status = Zentar::NumberOf<int>(fields.ValueOr("CIMStatusCode", "0"));
    if (status.value_or(0) != 0) {
        throw StatusError{{PercentDecoded(fields.ValueOr("CIMStatusCodeDescription", ""))},
                          *status};
    }
}

std::string WithoutSpace(std::string_view text) {
    std::string kept;
    std::copy_if(text.begin(), text.end(), std::back_inserter(kept),
                 [](char c) { return c != ' ' && c != '\t' && c != '"'; });
    return kept;
}

bool IsXml(std::string_view content_type) {
    const std::string type = WithoutSpace(content_type);
    for (const char* accepted : {"application/xml", "text/xml", "application/xml;charset=utf-8",
                                 "text/xml;charset=utf-8"}) {
        if (Zentar::EqualNoCase(type, accepted)) {
            return true;
        }
    }
    return false;
}

}  // namespace

void CheckStatus(const HttpReply& reply) {
    if (reply.status != 200) {
        throw CIMClientHTTPErrorException(reply.status, String::FromUtf8(reply.reason),
                                          Text(reply.headers, "CIMError"),
                                          Decoded(reply.headers, "PGErrorDetail"));
    }
}

void CheckHeaders(const HttpReply& reply) {
    const std::string* operation = reply.headers.Find("CIMOperation");
    if (operation == nullptr) {
        FailMalformed("Missing CIMOperation HTTP header");
    }
    const std::string* type = reply.headers.Find("Content-Type");
    if (type != nullptr && !IsXml(*type)) {
        FailMalformed("Bad Content-Type HTTP header; " + *type);
    }
    ThrowReportedError(reply.headers);
    if (!Zentar::EqualNoCase(*operation, "MethodResponse")) {
        FailMalformed("Received CIMOperation HTTP header value \"\", expected \"MethodResponse\"");
    }
}

void CheckTrailers(const HttpReply& reply) {
    ThrowReportedError(reply.trailers);
    const std::string* code = reply.trailers.Find("CIMStatusCode");
    if (code != nullptr && !Zentar::NumberOf<int>(*code)) {
        throw HttpError{"Bad CIMStatusCode HTTP trailer; " + *code};
    }
    if (reply.trailers.Find("CIMError") != nullptr) {
        throw ExplainedAs<CIMClientHTTPErrorException>({Zentar::FailureKind::kBadReply}, 400U,
                                                       "Bad Request",
                                                       Text(reply.trailers, "CIMError"), String());
    }
}

}  // namespace cimclient
