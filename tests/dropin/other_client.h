// Another CIM client library, which has the same class names as ours and nothing else in common.
#pragma once

#include <string>

#define OTHER_CLIENT __attribute__((visibility("default")))

namespace Pegasus {

class OTHER_CLIENT String {
public:
    String(const char* text);
    String(const String& other);
    ~String();
    String& operator=(const String& other);
    unsigned size() const;
    const std::string& Text() const;

    static const String EMPTY;

private:
    [[maybe_unused]] char padding_[96];
    std::string text_;
};

class OTHER_CLIENT Exception {
public:
    Exception(const String& message);
    virtual ~Exception();
    virtual const String& getMessage() const;

private:
    String message_;
};

class OTHER_CLIENT CIMClient {
public:
    CIMClient();
    ~CIMClient();
    void connect(const String& host, unsigned port, const String& user, const String& password);
    /// Throws Exception, always.
    void disconnect();
    /// What connect() was called with.
    const std::string& Peer() const;
    static int Living();

private:
    std::string peer_;
};

}  // namespace Pegasus
