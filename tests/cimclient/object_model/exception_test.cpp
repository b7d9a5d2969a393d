// The texts of exceptions, and what each is.
#include "Pegasus/Common/Exception.h"

#include <gmock/gmock.h>

#include <type_traits>

#include "Pegasus/Client/CIMClientException.h"
#include "Pegasus/Common/CIMInstance.h"
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
    ExpectText<TypeMismatchException>("type mismatch: m", m);
    ExpectText<DynamicCastFailedException>("dynamic cast failed");
    ExpectText<InvalidDateTimeFormatException>("invalid datetime format");
    ExpectText<DateTimeOutOfRangeException>("DateTime is out of range : m", m);
    ExpectText<MalformedObjectNameException>("malformed object name: m", m);
    ExpectText<BindFailedException>("Bind failed: m", m);
    ExpectText<InvalidLocatorException>("Invalid locator: m", m);
    ExpectText<CannotCreateSocketException>("Cannot create socket");
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
    EXPECT_EQ(TextOf(Error(503, "ce", "d").getMessage()), text("", "ce", "d"));
}

TEST(HttpErrors, TellTheirParts) {
    CIMClientHTTPErrorException error(400, "r", "", "");
    error = CIMClientHTTPErrorException(503, "Busy", "ce", "d");
    EXPECT_EQ(error.getCode(), 503U);
    EXPECT_EQ(TextOf(error.getCIMError()), "ce");
    EXPECT_EQ(TextOf(error.getCIMErrorDetail()), "d");
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

TEST(CimErrors, KeepTheirInstancesWhenCopied) {
    CIMException error(CIM_ERR_FAILED, "why", CIMInstance(CIMName("K")));
    error.addError(CIMInstance(CIMName("L")));
    CIMException copy;
    copy = error;
    EXPECT_EQ(copy.getErrorCount(), 2U);
    EXPECT_EQ(TextOf(copy.getError(1).getClassName().getString()), "L");
}

TEST(CimErrors, HaveNames) {
    const std::pair<int, const char*> names[] = {
        {0, "CIM_ERR_SUCCESS"},
        {1, "CIM_ERR_FAILED"},
        {2, "CIM_ERR_ACCESS_DENIED"},
        {3, "CIM_ERR_INVALID_NAMESPACE"},
        {4, "CIM_ERR_INVALID_PARAMETER"},
        {5, "CIM_ERR_INVALID_CLASS"},
        {6, "CIM_ERR_NOT_FOUND"},
        {7, "CIM_ERR_NOT_SUPPORTED"},
        {8, "CIM_ERR_CLASS_HAS_CHILDREN"},
        {9, "CIM_ERR_CLASS_HAS_INSTANCES"},
        {10, "CIM_ERR_INVALID_SUPERCLASS"},
        {11, "CIM_ERR_ALREADY_EXISTS"},
        {12, "CIM_ERR_NO_SUCH_PROPERTY"},
        {13, "CIM_ERR_TYPE_MISMATCH"},
        {14, "CIM_ERR_QUERY_LANGUAGE_NOT_SUPPORTED"},
        {15, "CIM_ERR_INVALID_QUERY"},
        {16, "CIM_ERR_METHOD_NOT_AVAILABLE"},
        {17, "CIM_ERR_METHOD_NOT_FOUND"},
        {18, "empty"},
        {19, "empty"},
        {20, "CIM_ERR_NAMESPACE_NOT_EMPTY"},
        {21, "CIM_ERR_INVALID_ENUMERATION_CONTEXT"},
        {22, "CIM_ERR_INVALID_OPERATION_TIMEOUT"},
        {23, "CIM_ERR_PULL_HAS_BEEN_ABANDONED"},
        {24, "CIM_ERR_PULL_CANNOT_BE_ABANDONED"},
        {25, "CIM_ERR_FILTERED_ENUMERATION_NOT_SUPPORTED"},
        {26, "CIM_ERR_CONTINUATION_ON_ERROR_NOT_SUPPORTED"},
        {27, "CIM_ERR_SERVER_LIMITS_EXCEEDED"},
        {28, "CIM_ERR_SERVER_IS_SHUTTING_DOWN"},
        {29, "Unrecognized CIM status code"},
        {1000, "Unrecognized CIM status code"},
    };
    for (const auto& [code, name] : names) {
        EXPECT_STREQ(cimStatusCodeToString(static_cast<CIMStatusCode>(code)), name);
    }
}

}  // namespace
