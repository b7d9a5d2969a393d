// Our own client: cancelling interrupts what is under way, certificates are tested, and exceptions
// say why.
#include "common/cimom/src/client_seam.h"

#include "client/client_settings.h"
#include "client/failures.h"
#include "common/cimom/src/exception_causes.h"
#include "common/text/utf8.h"

namespace Zentar {

namespace {

[[noreturn]] void Refuse(const std::string& problem) {
    throw cimclient::ExplainedAs<Pegasus::Exception>({FailureKind::kBadConnectionInfo},
                                                     problem.c_str());
}

cimclient::Trust TrustOf(const ZentarConnection::ConnectionOptions& options) {
    cimclient::Trust trust;
    trust.ca_file = options.ca_file;
    for (const std::string& text : options.fingerprints) {
        const auto fingerprint = cimclient::ParseFingerprint(text);
        if (!fingerprint) {
            Refuse("A fingerprint is not 32 bytes in hexadecimal digits.");
        }
        trust.fingerprints.push_back(*fingerprint);
    }
    if (const std::string problem = cimclient::ProblemOf(trust); !problem.empty()) {
        Refuse(problem);
    }
    return trust;
}

}  // namespace

bool ClientTestsTrust() { return true; }

void PrepareClient(Pegasus::CIMClient& client, const ZentarConnection::ConnectionOptions& options,
                   const std::shared_ptr<Cancellation>& cancellation) {
    cimclient::Configure(client, {cancellation, TrustOf(options), options.max_reply_bytes});
}

void ConnectClient(Pegasus::CIMClient& client, const ZentarConnection::ConnectionInfo& info,
                   const Pegasus::SSLContext* tls) {
    const Pegasus::String host(info.host.c_str());
    const Pegasus::String user(info.user.c_str());
    const std::string_view password(info.password.c_str());  // up to a zero, as the others
    if (Zentar::FirstInvalidUtf8(password) != std::string_view::npos) {
        throw Pegasus::Exception("The password is not valid UTF-8.");
    }
    cimclient::Connect(client, {host.utf8(), info.port, tls != nullptr, user.utf8(), password});
}

Failure CauseOf(const Pegasus::Exception& exception) {
    Failure cause = CauseByClass(exception);
    if (const auto* explained = dynamic_cast<const cimclient::Explained*>(&exception)) {
        cause.kind = explained->kind;
        cause.phase = explained->phase;
        cause.code = 0;  // the client's own, where there is one
        cause.text = explained->reason.empty() ? cause.text : explained->reason;
    }
    return cause;
}

}  // namespace Zentar
