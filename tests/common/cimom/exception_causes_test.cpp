// Which kind of failure an exception of the client API stands for.
#include "common/cimom/src/exception_causes.h"

#include <Pegasus/Client/CIMClientException.h>
#include <gtest/gtest.h>

#include "common/cimom/src/client_seam.h"

namespace {

using namespace Pegasus;
using Zentar::CauseByClass;
using Zentar::Failure;
using Zentar::FailureKind;
using Zentar::KindInEnumeration;

FailureKind KindOfHttp(Uint32 status) {
    return CauseByClass(CIMClientHTTPErrorException(status, "Reason", "", "")).kind;
}

FailureKind KindOfCim(int code) {
    return CauseByClass(CIMException(static_cast<CIMStatusCode>(code), "text")).kind;
}

TEST(ExceptionCauses, KnowHttpStatuses) {
    EXPECT_EQ(KindOfHttp(401), FailureKind::kCredentialsRefused);
    EXPECT_EQ(KindOfHttp(403), FailureKind::kNotPermitted);
    EXPECT_EQ(KindOfHttp(503), FailureKind::kBusy);
    for (const Uint32 status : {500U, 501U, 502U, 504U, 599U}) {
        EXPECT_EQ(KindOfHttp(status), FailureKind::kServiceFailed) << status;
    }
    for (const Uint32 status : {201U, 204U, 302U, 400U, 404U, 407U, 499U, 600U}) {
        EXPECT_EQ(KindOfHttp(status), FailureKind::kNotCimServer) << status;
    }
}

TEST(ExceptionCauses, KnowCimStatuses) {
    EXPECT_EQ(KindOfCim(2), FailureKind::kNotPermitted);
    EXPECT_EQ(KindOfCim(3), FailureKind::kUnknownNamespace);
    EXPECT_EQ(KindOfCim(5), FailureKind::kUnknownClass);
    for (const int code : {1, 4, 6, 7, 17, 28, 99, -1}) {
        EXPECT_EQ(KindOfCim(code), FailureKind::kCimError) << code;
    }
}

TEST(ExceptionCauses, KnowThatAnEnumerationHasMoreWaysToLackAClass) {
    for (const int code : {6, 7}) {
        const Failure cause = CauseByClass(CIMException(static_cast<CIMStatusCode>(code), ""));
        EXPECT_EQ(KindInEnumeration(cause), FailureKind::kUnknownClass) << code;
    }
    EXPECT_EQ(KindInEnumeration(CauseByClass(CIMException(CIM_ERR_FAILED, ""))),
              FailureKind::kCimError);
    EXPECT_EQ(KindInEnumeration(CauseByClass(CIMClientHTTPErrorException(503, "", "", ""))),
              FailureKind::kBusy);
}

TEST(ExceptionCauses, GiveTheStatusAndTheText) {
    const Failure cim = CauseByClass(CIMException(CIM_ERR_FAILED, "provider died"));
    EXPECT_EQ(cim.code, 1);
    EXPECT_EQ(cim.text, "provider died");
    const Failure http = CauseByClass(CIMClientHTTPErrorException(503, "Busy", "", ""));
    EXPECT_EQ(http.code, 503);
    EXPECT_EQ(http.text, "HTTP Error (503 Busy).");
}

TEST(ExceptionCauses, NeverReadATextForItsMeaning) {
    const Failure cause =
        CauseByClass(CIMException(CIM_ERR_FAILED, "HTTP Error (401 Unauthorized)."));
    EXPECT_EQ(cause.kind, FailureKind::kCimError);
    EXPECT_EQ(cause.code, 1);
}

TEST(ExceptionCauses, KnowTheClassesOfExceptions) {
    EXPECT_EQ(CauseByClass(InvalidLocatorException("h:1")).kind, FailureKind::kHostUnknown);
    EXPECT_EQ(CauseByClass(CannotConnectException("h:1")).kind, FailureKind::kUnreachable);
    EXPECT_EQ(CauseByClass(ConnectionTimeoutException()).kind, FailureKind::kTimedOut);
    EXPECT_EQ(CauseByClass(SSLException("x")).kind, FailureKind::kTlsFailed);
    EXPECT_EQ(CauseByClass(NotConnectedException()).kind, FailureKind::kBadConnectionInfo);
    EXPECT_EQ(CauseByClass(CIMClientMalformedHTTPException("x")).kind, FailureKind::kBadReply);
    EXPECT_EQ(CauseByClass(CIMClientXmlException("x")).kind, FailureKind::kBadReply);
    EXPECT_EQ(CauseByClass(CIMClientResponseException("x")).kind, FailureKind::kBadReply);
}

TEST(FailureKinds, StandInTheOrderOfTheirWords) {
    std::size_t position = 0;
    for (const Zentar::FailureKindName& row : Zentar::kFailureKinds) {
        EXPECT_EQ(static_cast<std::size_t>(row.kind), position++) << row.word;
    }
    EXPECT_EQ(static_cast<std::size_t>(FailureKind::kBadConnectionInfo) + 1, position);
    EXPECT_STREQ(Zentar::WordOf(FailureKind::kUntrusted), "untrusted");
    EXPECT_STREQ(Zentar::WordsOf(Zentar::FailurePhase::kReceiving), "receiving the answer");
}

}  // namespace
