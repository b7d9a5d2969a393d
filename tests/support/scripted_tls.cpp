#include "support/scripted_tls.h"

#include <openssl/evp.h>
#include <openssl/kdf.h>
#include <openssl/pem.h>
#include <sys/socket.h>

#include <cstdio>
#include <stdexcept>
#include <string_view>

#include "simhost/certificate.h"

namespace support {

namespace {

using simhost::CertificateKind;
using simhost::KeyType;

void Require(bool done, const std::string& what) {
    if (!done) {
        throw std::runtime_error("cannot make " + what);
    }
}

void WritePem(X509* certificate, const std::string& file_name) {
    std::FILE* file = std::fopen(file_name.c_str(), "w");
    Require(file != nullptr, file_name);
    const bool written = PEM_write_X509(file, certificate) == 1;
    Require(std::fclose(file) == 0 && written, file_name);
}

/// With TLS 1.2 alone: a client cannot choose the group then.
void UseGroup(SSL_CTX* context, const char* name) {
    const std::unique_ptr<EVP_PKEY_CTX, decltype(&EVP_PKEY_CTX_free)> maker(
        EVP_PKEY_CTX_new_from_name(nullptr, "DH", nullptr), EVP_PKEY_CTX_free);
    EVP_PKEY* group = nullptr;
    Require(EVP_PKEY_paramgen_init(maker.get()) == 1 &&
                EVP_PKEY_CTX_set_group_name(maker.get(), name) == 1 &&
                EVP_PKEY_paramgen(maker.get(), &group) == 1 &&
                SSL_CTX_set0_tmp_dh_pkey(context, group) == 1 &&
                SSL_CTX_set_max_proto_version(context, TLS1_2_VERSION) == 1 &&
                SSL_CTX_set_cipher_list(context, "DHE:@SECLEVEL=0") == 1,
            name);
}

constexpr const char* kOwnCipher = "TLS_AES_128_GCM_SHA256";
constexpr std::size_t kKeyBytes = 16;
constexpr std::size_t kNonceBytes = 12;
constexpr std::size_t kTagBytes = 16;

/// Where a connection keeps the secret that the server's records are sealed with, in hexadecimal.
int SecretPlace() {
    static const int place = SSL_get_ex_new_index(
        0, nullptr, nullptr, nullptr, [](void*, void* secret, CRYPTO_EX_DATA*, int, long, void*) {
            delete static_cast<std::string*>(secret);
        });
    return place;
}

void KeepSecret(const SSL* tls, const char* line) {
    const std::string_view text = line;
    if (text.starts_with("SERVER_TRAFFIC_SECRET_0 ")) {
        SSL_set_ex_data(const_cast<SSL*>(tls), SecretPlace(),
                        new std::string(text.substr(text.rfind(' ') + 1)));
    }
}

void SealOwnRecords(SSL_CTX* context) {
    Require(SSL_CTX_set_min_proto_version(context, TLS1_3_VERSION) == 1 &&
                SSL_CTX_set_ciphersuites(context, kOwnCipher) == 1 &&
                SSL_CTX_set_num_tickets(context, 0) == 1,
            "a context for records of its own");
    SSL_CTX_set_keylog_callback(context, KeepSecret);
}

std::string FromHex(const std::string& hex) {
    std::string bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
        bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
    }
    return bytes;
}

unsigned char* Bytes(std::string& text) { return reinterpret_cast<unsigned char*>(text.data()); }
const unsigned char* Bytes(const std::string& text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

/// HKDF-Expand-Label of TLS 1.3, without a context.
std::string Expanded(const std::string& secret, const std::string& label, std::size_t size) {
    const std::string full = "tls13 " + label;
    std::string info{'\0', static_cast<char>(size), static_cast<char>(full.size())};
    info += full + '\0';
    std::string expanded(size, '\0');
    const std::unique_ptr<EVP_PKEY_CTX, decltype(&EVP_PKEY_CTX_free)> kdf(
        EVP_PKEY_CTX_new_id(EVP_PKEY_HKDF, nullptr), EVP_PKEY_CTX_free);
    Require(EVP_PKEY_derive_init(kdf.get()) == 1 &&
                EVP_PKEY_CTX_set_hkdf_mode(kdf.get(), EVP_PKEY_HKDEF_MODE_EXPAND_ONLY) == 1 &&
                EVP_PKEY_CTX_set_hkdf_md(kdf.get(), EVP_sha256()) == 1 &&
                EVP_PKEY_CTX_set1_hkdf_key(kdf.get(), Bytes(secret),
                                           static_cast<int>(secret.size())) == 1 &&
                EVP_PKEY_CTX_add1_hkdf_info(kdf.get(), Bytes(info),
                                            static_cast<int>(info.size())) == 1 &&
                EVP_PKEY_derive(kdf.get(), Bytes(expanded), &size) == 1,
            "a key");
    return expanded;
}

int HangUpOnSessions(SSL* tls, int* /*alert*/, void* /*argument*/) {
    const unsigned char* session = nullptr;
    std::size_t size = 0;
    if (SSL_client_hello_get0_ext(tls, TLSEXT_TYPE_psk, &session, &size) == 0) {
        return SSL_CLIENT_HELLO_SUCCESS;
    }
    shutdown(SSL_get_fd(tls), SHUT_RDWR);
    return SSL_CLIENT_HELLO_ERROR;
}

}  // namespace

TlsServerContext::TlsServerContext(const TlsOptions& options)
    : context_(SSL_CTX_new(TLS_server_method())) {
    SSL_CTX* context = context_.get();
    SSL_CTX_set_security_level(context, 0);
    SSL_CTX_set_min_proto_version(context, options.oldest_version);
    SSL_CTX_set_max_proto_version(context, options.newest_version);
    SSL_CTX_set_cipher_list(context, "ALL:@SECLEVEL=0");
    constexpr unsigned char kSessions[] = "scripted";
    SSL_CTX_set_session_id_context(context, kSessions, sizeof kSessions - 1);

    const auto key = simhost::MakeKey(options.weak_key ? KeyType::kRsa1024 : KeyType::kEcdsaP256);
    const auto certificate = simhost::MakeCertificate(
        *key, options.weak_key ? CertificateKind::kSha1 : CertificateKind::kWrongName, "",
        "127.0.0.1");
    Require(SSL_CTX_use_certificate(context, certificate.get()) == 1 &&
                SSL_CTX_use_PrivateKey(context, key.get()) == 1,
            "a TLS context");
    if (options.group != nullptr) {
        UseGroup(context, options.group);
    }
    if (options.seals_own_records) {
        SealOwnRecords(context);
    }
    if (options.hangs_up_on_sessions) {
        SSL_CTX_set_client_hello_cb(context, HangUpOnSessions, nullptr);
    }
    if (!options.certificate_file.empty()) {
        WritePem(certificate.get(), options.certificate_file);
    }
}

TlsSeen SeenBy(SSL* tls) {
    const char* name = SSL_get_servername(tls, TLSEXT_NAMETYPE_host_name);
    return {SSL_get_version(tls), name != nullptr ? name : "", SSL_session_reused(tls) == 1};
}

RecordSealer::RecordSealer(SSL* tls) {
    const auto* const secret = static_cast<const std::string*>(SSL_get_ex_data(tls, SecretPlace()));
    Require(secret != nullptr, "records without a secret");
    key_ = Expanded(FromHex(*secret), "key", kKeyBytes);
    nonce_ = Expanded(FromHex(*secret), "iv", kNonceBytes);
}

std::string RecordSealer::Seal(const TlsRecord& record) {
    std::string inner = record.content;
    inner += static_cast<char>(record.type);
    inner.append(record.padding, '\0');
    const std::size_t size = inner.size() + kTagBytes;
    std::string sealed{23, 3, 3, static_cast<char>(size >> 8U), static_cast<char>(size & 0xFFU)};
    const std::size_t head = sealed.size();
    sealed.resize(head + size);
    std::string nonce = nonce_;
    for (unsigned i = 0; i < 8; ++i) {
        nonce[kNonceBytes - 1 - i] ^= static_cast<char>(sealed_ >> (8U * i) & 0xFFU);
    }
    ++sealed_;
    const std::unique_ptr<EVP_CIPHER_CTX, decltype(&EVP_CIPHER_CTX_free)> cipher(
        EVP_CIPHER_CTX_new(), EVP_CIPHER_CTX_free);
    int written = 0;
    Require(EVP_EncryptInit_ex(cipher.get(), EVP_aes_128_gcm(), nullptr, Bytes(key_),
                               Bytes(nonce)) == 1 &&
                EVP_EncryptUpdate(cipher.get(), nullptr, &written, Bytes(sealed),
                                  static_cast<int>(head)) == 1 &&
                EVP_EncryptUpdate(cipher.get(), Bytes(sealed) + head, &written, Bytes(inner),
                                  static_cast<int>(inner.size())) == 1 &&
                EVP_EncryptFinal_ex(cipher.get(), nullptr, &written) == 1 &&
                EVP_CIPHER_CTX_ctrl(cipher.get(), EVP_CTRL_GCM_GET_TAG, kTagBytes,
                                    Bytes(sealed) + head + inner.size()) == 1,
            "a record");
    return sealed;
}

}  // namespace support
