// An installed OpenPegasus: nothing beyond the API that every client offers. Cancelling and the
// deadline take effect between its requests, and memory alone bounds its replies.
#include "common/cimom/src/client_seam.h"
#include "common/cimom/src/exception_causes.h"

namespace Zentar {

namespace {

/// A password on its way to the client, overwritten after it.
class PasswordText {
public:
    explicit PasswordText(const std::string& password) {
        try {
            text_ = Pegasus::String(password.c_str());
        } catch (const Pegasus::Exception&) {
            // Its message repeats the text, and is going to be logged.
            throw Pegasus::Exception("The password is not valid UTF-8.");
        }
    }
    ~PasswordText() {
        for (Pegasus::Uint32 i = 0; i < text_.size(); ++i) {
            text_[i] = Pegasus::Char16();
        }
    }
    PasswordText(const PasswordText&) = delete;
    PasswordText& operator=(const PasswordText&) = delete;

    const Pegasus::String& text() const { return text_; }

private:
    Pegasus::String text_;
};

}  // namespace

bool ClientTestsTrust() { return false; }

void PrepareClient(Pegasus::CIMClient&, const ZentarConnection::ConnectionOptions&,
                   const std::shared_ptr<Cancellation>&) {}

void ConnectClient(Pegasus::CIMClient& client, const ZentarConnection::ConnectionInfo& info,
                   const Pegasus::SSLContext* tls) {
    const Pegasus::String host(info.host.c_str());
    const Pegasus::String user(info.user.c_str());
    const PasswordText password(info.password);
    if (tls == nullptr) {
        client.connect(host, info.port, user, password.text());
    } else {
        client.connect(host, info.port, *tls, user, password.text());
    }
}

Failure CauseOf(const Pegasus::Exception& exception) { return CauseByClass(exception); }

}  // namespace Zentar
