#include "scenarios.h"

#include <utility>

namespace transcripts {

namespace {

using simhost::Fault;
using simhost::Transport;
namespace Faults = simhost::Faults;

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

Scenario WithFault(const std::string& failure, Fault fault,
                   Transport transport = Transport::kHttp) {
    Scenario scenario = OnAllOperations(failure);
    scenario.transport = transport;
    scenario.fault = std::move(fault);
    return scenario;
}

Scenario With(bool Scenario::*property, const std::string& failure) {
    Scenario scenario = OnAllOperations(failure);
    scenario.*property = false;
    return scenario;
}

Scenario FailingAssociations() {
    Fault failure = Faults::CimErrorElement(1, "provider died");
    failure.only_operation = "Associators";
    Scenario scenario = WithFault("associations", failure);
    scenario.operations = {Operations().back()};
    return scenario;
}

/// An answer with this body, announced as `length` bytes.
Fault Answer(const std::string& body, std::size_t length) {
    return Faults::Raw(
        "HTTP/1.1 200 OK\r\nContent-Type: application/xml; charset=utf-8\r\n"
        "CIMOperation: MethodResponse\r\nContent-Length: " +
        std::to_string(length) + "\r\n\r\n" + body);
}

Fault BrokenXml() {
    const std::string body =
        "<?xml version=\"1.0\"?>\n<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"></GIM>";
    return Answer(body, body.size());
}

Fault TruncatedBody() { return Answer("<?xml version=\"1.0\"?>\n<CIM CIMVERSION=", 500); }

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
        WithFault("broken-xml", BrokenXml()),
        WithFault("cim-error", Faults::CimErrorElement(1, "provider died")),
        WithFault("cim-error-without-text", Faults::CimErrorElement(1, "")),
        WithFault("cim-error-in-trailers", Faults::CimErrorTrailer(4, "out of memory")),
        WithFault("closed-connection", Faults::Close()),
        WithFault("closed-connection-over-tls", Faults::Close(), Transport::kHttps),
        WithFault("closed-handshake", Faults::CloseOnConnect(), Transport::kHttps),
        WithFault("content-type", Faults::ContentType("text/html")),
        WithFault("http-status", Faults::HttpStatus(503, "Service Unavailable")),
        WithFault("http-status-with-cim-error",
                  Faults::HttpStatus(400, "Bad Request", "request-not-valid")),
        WithFault("message-id", Faults::MessageId("0")),
        WithFault("no-http", Faults::Raw("SSH-2.0-OpenSSH_8.3\r\n")),
        WithFault("no-operation-header", Faults::OperationHeader("")),
        WithFault("operation-header", Faults::OperationHeader("MethodCall")),
        WithFault("reset-connection", Faults::Reset()),
        WithFault("truncated-body", TruncatedBody()),
        WithFault("truncated-head", Faults::Truncate(40)),
    };
    scenarios.insert(scenarios.end(), failing.begin(), failing.end());
    return scenarios;
}

}  // namespace transcripts
