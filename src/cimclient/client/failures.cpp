#include "client/failures.h"

#include "Pegasus/Client/CIMClientException.h"
#include "common/text/beginning.h"
#include "common/text/utf8.h"
#include "reply_errors.h"

namespace Pegasus::kalvex::detail {

struct ExceptionAccess {
    static void SetMessage(Exception& exception, const std::string& valid_utf8) {
        exception.message_ = String::FromUtf8(valid_utf8);
    }
};

}  // namespace Pegasus::kalvex::detail

namespace cimclient {

namespace {

using Pegasus::String;
using Zentar::Beginning;
using Zentar::FailureKind;
using Zentar::FailurePhase;

constexpr std::string_view kEllipsis = "\u2026";

String Repaired(const std::string& text) { return String::FromUtf8(Zentar::RepairedUtf8(text)); }

}  // namespace

void WithExceptions(const std::function<void()>& read) {
    try {
        read();
    } catch (const XmlError& error) {
        throw Pegasus::CIMClientXmlException(Repaired(error.message));
    } catch (const ResponseError& error) {
        throw Pegasus::CIMClientResponseException(Repaired(error.message));
    } catch (const StatusError& error) {
        throw Pegasus::CIMException(static_cast<Pegasus::CIMStatusCode>(error.status),
                                    Repaired(error.message));
    } catch (const FramingError& error) {
        throw ExplainedAs<Pegasus::CIMClientHTTPErrorException>(
            {error.kind}, error.status, error.status_text, "", Repaired(error.message));
    } catch (const HttpError& error) {
        throw ExplainedAs<Pegasus::CIMClientMalformedHTTPException>({error.kind},
                                                                    Repaired(error.message));
    }
}

void ThrowCannotConnect(const NetworkError& error, const std::string& host, unsigned port) {
    const Explained explanation{error.kind, error.phase, error.reason};
    const String locator = Repaired(host + ":" + std::to_string(port));
    if (error.kind == FailureKind::kHostUnknown) {
        throw ExplainedAs<Pegasus::InvalidLocatorException>(explanation, locator);
    }
    throw ExplainedAs<Pegasus::CannotConnectException>(
        explanation, "Cannot connect to " + locator + ". Connection failed.");
}

void ThrowInterrupted(const NetworkError& error, bool is_receiving) {
    const FailurePhase phase = error.phase == FailurePhase::kReceiving && !is_receiving
                                   ? FailurePhase::kWaiting
                                   : error.phase;
    const Explained explanation{error.kind, phase, error.reason};
    if (error.kind == FailureKind::kCancelled) {
        throw ExplainedAs<Pegasus::Exception>(explanation, "cancelled");
    }
    throw ExplainedAs<Pegasus::ConnectionTimeoutException>(explanation);
}

void ThrowUnanswered(const std::string& reason) {
    throw ExplainedAs<Pegasus::CIMClientMalformedHTTPException>(
        {FailureKind::kUnreachable, FailurePhase::kWaiting,
         "The host closed the connection without an answer: " + reason + "."},
        "Connection closed by CIM Server.");
}

void MakeFitForLogs(Pegasus::Exception& exception, const Credentials& credentials) {
    const std::string_view text = exception.getMessage().utf8();
    // Twice: the first cut bounds the work, but must not hide a half of the credentials.
    const std::size_t longest_secret = credentials.AuthorizationValue().size();
    std::string fit(Beginning(text, kMaxMessageBytes + longest_secret));
    credentials.RemoveFrom(fit);
    if (fit.size() > kMaxMessageBytes || text.size() > kMaxMessageBytes + longest_secret) {
        fit = std::string(Beginning(fit, kMaxMessageBytes - kEllipsis.size()));
        fit += kEllipsis;
    }
    Pegasus::detail::ExceptionAccess::SetMessage(exception, fit);
}

}  // namespace cimclient
