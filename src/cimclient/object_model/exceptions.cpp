#include <string>

#include "Pegasus/Client/CIMClientException.h"

namespace Pegasus::kalvex {

Exception::~Exception() = default;

namespace {

String HttpErrorText(Uint32 code, const String& reason, const String& cim_error,
                     const String& detail) {
    const auto quoted = [](const char* label, const String& text) {
        return text.utf8().empty()
                   ? std::string()
                   : " " + std::string(label) + " = \"" + std::string(text.utf8()) + "\"";
    };
    std::string text = "HTTP Error (" + std::to_string(code);
    if (!reason.utf8().empty()) {
        text += " " + std::string(reason.utf8());
    }
    text += ")";
    const std::string causes = quoted("CIMError", cim_error) + quoted("Detail", detail);
    if (!causes.empty()) {
        text += ":" + causes;
    }
    return String::FromUtf8(text + ".");
}

}  // namespace

CIMClientHTTPErrorException::CIMClientHTTPErrorException(Uint32 httpStatusCode,
                                                         const String& reasonPhrase,
                                                         const String& cimError,
                                                         const String& cimErrorDetail)
    : Exception(HttpErrorText(httpStatusCode, reasonPhrase, cimError, cimErrorDetail)),
      code_(httpStatusCode) {}

}  // namespace Pegasus::kalvex
