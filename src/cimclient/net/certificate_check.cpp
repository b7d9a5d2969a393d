#include "net/certificate_check.h"

#include <openssl/x509.h>
#include <openssl/x509v3.h>

#include <algorithm>
#include <boost/asio/ip/address.hpp>

#include "net/network_error.h"

namespace cimclient {

namespace {

using Zentar::FailureKind;
using Zentar::FailurePhase;

bool IsAddress(const std::string& host) {
    boost::system::error_code error;
    boost::asio::ip::make_address(host, error);
    return !error;
}

[[noreturn]] void FailHandshake(FailureKind kind, std::string reason) {
    throw NetworkError{kind, FailurePhase::kTlsHandshake, std::move(reason)};
}

}  // namespace

void ExpectHost(SSL* ssl, const std::string& host, bool tests_host_name) {
    const bool is_address = IsAddress(host);
    if (!is_address) {
        SSL_set_tlsext_host_name(ssl, host.c_str());
    }
    if (!tests_host_name) {
        return;
    }
    X509_VERIFY_PARAM* const wanted = SSL_get0_param(ssl);
    X509_VERIFY_PARAM_set_hostflags(wanted, X509_CHECK_FLAG_NO_PARTIAL_WILDCARDS);
    const int is_set = is_address ? X509_VERIFY_PARAM_set1_ip_asc(wanted, host.c_str())
                                  : X509_VERIFY_PARAM_set1_host(wanted, host.c_str(), 0);
    if (is_set != 1) {
        FailHandshake(FailureKind::kUntrusted,
                      "No certificate can be tested for this host's name.");
    }
}

void CheckHandshake(SSL* ssl, const boost::system::error_code& error,
                    const std::vector<Fingerprint>& fingerprints) {
    const long verified = SSL_get_verify_result(ssl);
    if (error && verified != X509_V_OK && SSL_get_verify_mode(ssl) != SSL_VERIFY_NONE) {
        FailHandshake(FailureKind::kUntrusted, X509_verify_cert_error_string(verified));
    }
    if (error) {
        FailHandshake(FailureKind::kTlsFailed, error.message());
    }
    if (fingerprints.empty()) {
        return;
    }
    const Fingerprint shown = FingerprintOf(SSL_get0_peer_certificate(ssl));
    if (std::find(fingerprints.begin(), fingerprints.end(), shown) == fingerprints.end()) {
        FailHandshake(FailureKind::kUntrusted,
                      "The certificate's SHA-256 fingerprint is " + FingerprintText(shown) + ".");
    }
}

}  // namespace cimclient
