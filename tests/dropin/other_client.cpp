#include "other_client.h"

namespace Pegasus {

namespace {

int living = 0;

}  // namespace

const String String::EMPTY("nothing");

String::String(const char* text) : padding_{}, text_("other " + std::string(text)) {}
String::String(const String& other) : padding_{}, text_(other.text_) {}
String::~String() = default;
String& String::operator=(const String& other) {
    text_ = other.text_;
    return *this;
}
unsigned String::size() const { return 4711; }
const std::string& String::Text() const { return text_; }

Exception::Exception(const String& message) : message_(message) {}
Exception::~Exception() = default;
const String& Exception::getMessage() const { return message_; }

CIMClient::CIMClient() { ++living; }
CIMClient::~CIMClient() { --living; }
void CIMClient::connect(const String& host, unsigned port, const String&, const String&) {
    peer_ = host.Text() + ":" + std::to_string(port);
}
void CIMClient::disconnect() { throw Exception("never connected"); }
const std::string& CIMClient::Peer() const { return peer_; }
int CIMClient::Living() { return living; }

}  // namespace Pegasus
