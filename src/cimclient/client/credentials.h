// User name and password for HTTP Basic authentication (RFC 7617), in UTF-8.
#pragma once

#include <string>
#include <string_view>

#include "common/platform/secret.h"

namespace cimclient {

class Credentials {
public:
    Credentials() = default;
    Credentials(std::string_view user, std::string_view password);

    /// The value of an Authorization field.
    const std::string& AuthorizationValue() const { return value_.text(); }

    /// Puts asterisks in place of the encoded credentials and, when it has 6 characters or more, of
    /// the password. A shorter one would take innocent words with it.
    void RemoveFrom(std::string& text) const;

private:
    Zentar::Secret value_;
    std::size_t user_bytes_ = 0;  ///< of the decoded value, before the colon
};

/// Whether a WWW-Authenticate field offers Basic, alone or beside other schemes.
bool OffersBasic(std::string_view challenge);

}  // namespace cimclient
