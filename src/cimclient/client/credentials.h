// User name and password for HTTP Basic authentication (RFC 7617), in UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace cimclient {

/// Wipes what it holds when it is destroyed or replaced.
class Credentials {
public:
    Credentials() = default;
    Credentials(std::string_view user, std::string_view password);
    ~Credentials();
    Credentials(const Credentials&) = delete;
    Credentials& operator=(const Credentials&) = delete;
    Credentials& operator=(Credentials&& other) noexcept;

    /// The value of an Authorization field. The caller wipes its copies.
    const std::string& AuthorizationValue() const { return value_; }

    /// Puts asterisks in place of the encoded credentials and, when it has 6 characters or more, of
    /// the password. A shorter one would take innocent words with it.
    void RemoveFrom(std::string& text) const;

private:
    std::string value_;
    std::size_t user_bytes_ = 0;  ///< of the decoded value, before the colon
};

/// Overwrites all the memory that the text has, and empties it.
void Wipe(std::string& text);

/// Whether a WWW-Authenticate field offers Basic, alone or beside other schemes.
bool OffersBasic(std::string_view challenge);

}  // namespace cimclient
