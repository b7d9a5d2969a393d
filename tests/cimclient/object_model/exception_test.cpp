// The texts of exceptions, and what each is.
#include "Pegasus/Common/Exception.h"

#include <gmock/gmock.h>

#include <type_traits>

#include "Pegasus/Client/CIMClientException.h"
#include "support/client_view.h"

namespace {

using namespace Pegasus;
using support::TextOf;

/// An Exception, but no CIMException, nor a std::exception.
template <class Thrown>
constexpr bool kIsTransportFailure =
    std::is_base_of_v<Exception, Thrown> && !std::is_base_of_v<CIMException, Thrown> &&
    !std::is_base_of_v<std::exception, Thrown>;

template <class Thrown, class... Argument>
void ExpectText(const std::string& text, Argument... argument) {
    static_assert(kIsTransportFailure<Thrown>);
    try {
        throw Thrown(argument...);
    } catch (const Exception& error) {
        EXPECT_EQ(TextOf(error.getMessage()), text);
    }
}

TEST(Exceptions, CarryTheirTexts) {
    const String m("m");
    ExpectText<Exception>("m", m);
    ExpectText<IndexOutOfBoundsException>("index out of bounds");
    ExpectText<AlreadyExistsException>("already exists: m", m);
    ExpectText<InvalidNameException>("The CIM name is not valid: m", m);
    ExpectText<InvalidNamespaceNameException>("invalid CIM namespace name: m", m);
    ExpectText<UninitializedObjectException>("uninitialized object");
    ExpectText<TypeMismatchException>("type mismatch");
    ExpectText<MalformedObjectNameException>("malformed object name: m", m);
    ExpectText<InvalidLocatorException>("Invalid locator: m", m);
    ExpectText<CannotConnectException>("m", m);
    ExpectText<AlreadyConnectedException>("already connected");
    ExpectText<NotConnectedException>("not connected");
    ExpectText<ConnectionTimeoutException>("connection timed out");
    ExpectText<SSLException>("SSL Exception: m", m);
    ExpectText<CIMClientMalformedHTTPException>("m", m);
    ExpectText<CIMClientXmlException>("m", m);
    ExpectText<CIMClientResponseException>("m", m);
}

TEST(HttpErrors, ComposeTheirTexts) {
    using Error = CIMClientHTTPErrorException;
    const auto text = [](const char* reason, const char* error, const char* detail) {
        return TextOf(Error(503, reason, error, detail).getMessage());
    };
    static_assert(kIsTransportFailure<Error>);
    EXPECT_EQ(text("Busy", "ce", "d"), "HTTP Error (503 Busy): CIMError = \"ce\" Detail = \"d\".");
    EXPECT_EQ(text("", "ce", "d"), "HTTP Error (503): CIMError = \"ce\" Detail = \"d\".");
    EXPECT_EQ(text("Service Unavailable", "", ""), "HTTP Error (503 Service Unavailable).");
    EXPECT_EQ(text("Busy", "ce", ""), "HTTP Error (503 Busy): CIMError = \"ce\".");
    EXPECT_EQ(text("Busy", "", "d"), "HTTP Error (503 Busy): Detail = \"d\".");
    EXPECT_EQ(text("", "ce", ""), "HTTP Error (503): CIMError = \"ce\".");
    EXPECT_EQ(text("", "", "d"), "HTTP Error (503): Detail = \"d\".");
    EXPECT_EQ(text("", "", ""), "HTTP Error (503).");
    EXPECT_EQ(Error(503, "Busy", "", "").getCode(), 503U);
}

TEST(CimErrors, HaveTheirDescriptionForAText) {
    static_assert(std::is_base_of_v<Exception, CIMException>);
    const CIMException error(CIM_ERR_FAILED, "why");
    EXPECT_EQ(error.getCode(), CIM_ERR_FAILED);
    EXPECT_EQ(TextOf(error.getMessage()), "why");
    EXPECT_EQ(TextOf(CIMException(CIM_ERR_FAILED).getMessage()), "");
    for (const int code : {18, 29, 99, -1}) {
        EXPECT_EQ(CIMException(static_cast<CIMStatusCode>(code)).getCode(), code);
    }
    const Exception plain = error;
    EXPECT_EQ(TextOf(plain.getMessage()), "why");
}

}  // namespace
