#include "cli/failure_explanation.h"

#include <algorithm>
#include <cctype>

namespace command {

namespace {

enum class Where { kStart, kAnywhere };

/// The client's own texts are known from their start; a host's texts vary, and are searched.
struct Rule {
    Where where;
    std::string_view pattern;  ///< matches in any case
    Explanation explanation;
};

constexpr Explanation kRefusal{
    Cause::kRefused,
    "the host refused the user name or password, or the account lacks the CIM permission",
    "check --user and the password"};
constexpr Explanation kForbidden{Cause::kRefused, "the host does not let this account read it",
                                 "use an account with the CIM permission"};
constexpr Explanation kBusy{Cause::kUnreachable, "the host's CIM service is overloaded or starting",
                            "try again in some minutes"};
constexpr Explanation kServiceFailed{
    Cause::kUnreachable, "the host's CIM service failed",
    "try again, and restart the host's CIM service if it persists"};
constexpr Explanation kWebServer{
    Cause::kNoCimServer, "something answers there, but it is no CIM server",
    "check --host, --port and --transport (CIM servers listen on 5989 for https, 5988 for http)"};
constexpr Explanation kClosed{Cause::kUnreachable, "the host closed the connection unanswered",
                              "check that --transport fits the port, then try again"};
constexpr Explanation kTimeOut{Cause::kUnreachable, "the host did not answer in time",
                               "try again, and restart the host's CIM service if it persists"};
constexpr Explanation kNoConnection{Cause::kUnreachable, "the host could not be connected to",
                                    "check that it is up, and --host, --port and --transport"};
constexpr Explanation kNoSuchHost{Cause::kUnreachable, "the host's name could not be resolved",
                                  "check the spelling of --host, or give its address"};
constexpr Explanation kDamaged{
    Cause::kBadReply, "the host's reply was cut off or is damaged",
    "try again, and look for a proxy or a failing CIM service if it persists"};
constexpr Explanation kNoXml{Cause::kBadReply, "the host's reply was cut off or is no CIM-XML",
                             "try again, and check that --port leads to the CIM server"};
constexpr Explanation kNotCimXml{Cause::kBadReply, "the host's reply is not valid CIM-XML",
                                 "check that --port leads to the CIM server, then try again"};
constexpr Explanation kNoNamespace{
    Cause::kCimError, "the host does not have this kind of inventory: the namespace is unknown",
    "install the hardware vendor's CIM provider on the host"};
constexpr Explanation kNoClass{
    Cause::kCimError, "the host does not have this kind of inventory: the class is unknown",
    "install the CIM provider for it on the host, or leave the section out"};
constexpr Explanation kNoProvider{Cause::kCimError, "the host's provider for this is not running",
                                  "install it or restart the host's CIM service"};
constexpr Explanation kDenied{Cause::kCimError, "the host does not let this account read it",
                              "use an account with more rights"};
constexpr Explanation kHostError{Cause::kCimError, "the host reported an error",
                                 "try again, and look into the host's CIM service if it persists"};

constexpr Rule kRules[] = {
    {Where::kStart, "HTTP Error (401", kRefusal},
    {Where::kStart, "Invalid Authorization header", kRefusal},
    {Where::kStart, "HTTP Error (403", kForbidden},
    {Where::kStart, "HTTP Error (503", kBusy},
    {Where::kStart, "HTTP Error (500", kServiceFailed},
    {Where::kStart, "HTTP Error (502", kServiceFailed},
    {Where::kStart, "HTTP Error (504", kServiceFailed},
    {Where::kStart, "HTTP Error (", kWebServer},
    {Where::kStart, "Bad Content-Type HTTP header", kWebServer},
    {Where::kStart, "Malformed HTTP response message", kWebServer},
    {Where::kStart, "Missing CIMOperation HTTP header", kWebServer},
    {Where::kStart, "Received CIMOperation HTTP header", kWebServer},
    {Where::kAnywhere, ": Expected <?xml", kNoXml},
    {Where::kStart, "Connection closed by CIM Server", kClosed},
    {Where::kStart, "connection timed out", kTimeOut},
    {Where::kStart, "Cannot connect to ", kNoConnection},
    {Where::kStart, "Cannot create socket", kNoConnection},
    {Where::kStart, "not connected", kNoConnection},
    {Where::kStart, "Invalid locator: ", kNoSuchHost},
    {Where::kStart, "Validation error: on line ", kNotCimXml},
    {Where::kStart, "Semantic error: on line ", kNotCimXml},
    {Where::kStart, "Mismatched response message ID", kNotCimXml},
    {Where::kStart, "Received unsupported protocol version", kNotCimXml},
    {Where::kStart, "The byte sequence starting at index", kNotCimXml},
    {Where::kStart, "malformed object name: ", kNotCimXml},
    {Where::kAnywhere, ": on line ", kDamaged},
    {Where::kAnywhere, "INVALID_NAMESPACE", kNoNamespace},
    {Where::kAnywhere, "invalid namespace", kNoNamespace},
    {Where::kAnywhere, "INVALID_CLASS", kNoClass},
    {Where::kAnywhere, "invalid class", kNoClass},
    {Where::kAnywhere, "class not found", kNoClass},
    {Where::kAnywhere, "provider not found", kNoProvider},
    {Where::kAnywhere, "ACCESS_DENIED", kDenied},
    {Where::kAnywhere, "access denied", kDenied},
    {Where::kAnywhere, "failed to enqueue", kBusy},
};

bool SameLetter(char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) ==
           std::tolower(static_cast<unsigned char>(b));
}

bool Matches(const Rule& rule, std::string_view reason) {
    const auto* const found = std::search(reason.begin(), reason.end(), rule.pattern.begin(),
                                          rule.pattern.end(), SameLetter);
    return found != reason.end() && (rule.where == Where::kAnywhere || found == reason.begin());
}

}  // namespace

const Explanation& Explain(std::string_view reason) {
    const auto* rule =
        std::ranges::find_if(kRules, [&](const Rule& r) { return Matches(r, reason); });
    return rule == std::end(kRules) ? kHostError : rule->explanation;
}

}  // namespace command
