#include "scenarios.h"

#include <utility>

namespace transcripts {

namespace {

using simhost::Misbehaviour;
using simhost::Transport;
namespace Misbehaviours = simhost::Misbehaviours;

Scenario OnBuiltinHost(const Operation& operation) {
    Scenario scenario;
    scenario.name = std::string("builtin-") + operation.topic;
    scenario.operations = {operation};
    return scenario;
}

Scenario OnAllOperations(const std::string& failure) {
    Scenario scenario;
    scenario.name = "failing-" + failure;
    scenario.operations = Operations();
    return scenario;
}

Scenario Misbehaving(const std::string& failure, Misbehaviour misbehaviour,
                     Transport transport = Transport::kHttp) {
    Scenario scenario = OnAllOperations(failure);
    scenario.transport = transport;
    scenario.misbehaviour = std::move(misbehaviour);
    return scenario;
}

Scenario With(bool Scenario::*property, const std::string& failure) {
    Scenario scenario = OnAllOperations(failure);
    scenario.*property = false;
    return scenario;
}

Scenario FailingAssociations() {
    Misbehaviour failure = Misbehaviours::CimErrorElement(1, "provider died");
    failure.only_operation = "Associators";
    Scenario scenario = Misbehaving("associations", failure);
    scenario.operations = {Operations().back()};
    return scenario;
}

/// An answer with this body, announced as `length` bytes.
Misbehaviour Answer(const std::string& body, std::size_t length) {
    return Misbehaviours::Raw(
        "HTTP/1.1 200 OK\r\nContent-Type: application/xml; charset=utf-8\r\n"
        "CIMOperation: MethodResponse\r\nContent-Length: " +
        std::to_string(length) + "\r\n\r\n" + body);
}

Misbehaviour BrokenXml() {
    const std::string body =
        "<?xml version=\"1.0\"?>\n<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"></GIM>";
    return Answer(body, body.size());
}

Misbehaviour TruncatedBody() { return Answer("<?xml version=\"1.0\"?>\n<CIM CIMVERSION=", 500); }

}  // namespace

std::vector<Scenario> Scenarios() {
    std::vector<Scenario> scenarios;
    for (const Operation& operation : Operations()) {
        scenarios.push_back(OnBuiltinHost(operation));
    }
    const std::vector<Scenario> failing = {
        With(&Scenario::up, "refused-connection"),
        With(&Scenario::right_password, "wrong-password"),
        With(&Scenario::has_namespaces, "missing-namespaces"),
        With(&Scenario::has_classes, "missing-classes"),
        FailingAssociations(),
        Misbehaving("broken-xml", BrokenXml()),
        Misbehaving("cim-error", Misbehaviours::CimErrorElement(1, "provider died")),
        Misbehaving("cim-error-without-text", Misbehaviours::CimErrorElement(1, "")),
        Misbehaving("cim-error-in-trailers", Misbehaviours::CimErrorTrailer(4, "out of memory")),
        Misbehaving("closed-connection", Misbehaviours::Close()),
        Misbehaving("closed-connection-over-tls", Misbehaviours::Close(), Transport::kHttps),
        Misbehaving("closed-handshake", Misbehaviours::CloseOnConnect(), Transport::kHttps),
        Misbehaving("content-type", Misbehaviours::ContentType("text/html")),
        Misbehaving("http-status", Misbehaviours::HttpStatus(503, "Service Unavailable")),
        Misbehaving("http-status-with-cim-error",
                    Misbehaviours::HttpStatus(400, "Bad Request", "request-not-valid")),
        Misbehaving("message-id", Misbehaviours::MessageId("0")),
        Misbehaving("no-http", Misbehaviours::Raw("SSH-2.0-OpenSSH_8.3\r\n")),
        Misbehaving("no-operation-header", Misbehaviours::OperationHeader("")),
        Misbehaving("operation-header", Misbehaviours::OperationHeader("MethodCall")),
        Misbehaving("reset-connection", Misbehaviours::Reset()),
        Misbehaving("truncated-body", TruncatedBody()),
        Misbehaving("truncated-head", Misbehaviours::Truncate(40)),
    };
    scenarios.insert(scenarios.end(), failing.begin(), failing.end());
    return scenarios;
}

}  // namespace transcripts
