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

private:
    std::string value_;
};

/// Overwrites all the memory that the text has, and empties it.
void Wipe(std::string& text);

/// Whether a WWW-Authenticate field offers Basic, alone or beside other schemes.
bool OffersBasic(std::string_view challenge);

}  // namespace cimclient
