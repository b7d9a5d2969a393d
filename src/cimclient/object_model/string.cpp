#include "Pegasus/Common/String.h"

#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "Pegasus/Common/Exception.h"
#include "object_model/utf.h"

namespace Pegasus::kalvex {

namespace detail {

struct Utf16Form {
    std::vector<Char16> units;  ///< with a terminating 0
    /// The user was given a reference to a unit, through which the text may change at any time.
    bool leads = false;
    std::string utf8;  ///< of the units when they were last asked for it, once they lead
};

/// The text of a String: this head, the UTF-8 bytes and a 0 in one allocation. UTF-8 leads, unless
/// a reference to a unit is out: then the units lead, and the body is no longer shared.
struct StringBody : Counted {
    /// With a 0 after the bytes, which are still to be written.
    static Shared<StringBody> OfSize(std::size_t size);
    static Shared<StringBody> Make(std::string_view text);

    char* Bytes() { return reinterpret_cast<char*>(this + 1); }
    bool UnitsLead() const { return utf16 && utf16->leads; }
    Utf16Form& Utf16() {
        if (!utf16) {
            auto form = std::make_unique<Utf16Form>();
            form->units = ToUtf16(Text());
            form->units.push_back(Char16());
            utf16 = std::move(form);
        }
        return *utf16;
    }
    std::string_view Text() {
        if (!UnitsLead()) {
            return {Bytes(), size};
        }
        utf16->utf8 = ToUtf8(utf16->units.data(), utf16->units.size() - 1);
        return utf16->utf8;
    }

    Uint32 size = 0;
    std::unique_ptr<Utf16Form> utf16;
};

Shared<StringBody> StringBody::OfSize(std::size_t size) {
    constexpr std::size_t kMaxBytes = 0x7FFFFFFF;
    if (size > kMaxBytes) {
        throw std::bad_alloc();
    }
    auto* body = ::new (ArenaAllocate(sizeof(StringBody) + size + 1)) StringBody;
    body->size = static_cast<Uint32>(size);
    body->Bytes()[size] = '\0';
    return Shared<StringBody>(body);
}

Shared<StringBody> StringBody::Make(std::string_view text) {
    Shared<StringBody> body = OfSize(text.size());
    text.copy(body->Bytes(), text.size());
    return body;
}

namespace {

Shared<StringBody> BodyUnlessEmpty(std::string_view text) {
    return text.empty() ? Shared<StringBody>() : StringBody::Make(text);
}

[[noreturn]] void ThrowInvalidUtf8(std::string_view text, std::size_t at) {
    std::string message = "The byte sequence starting at index " + std::to_string(at) +
                          " is not valid UTF-8 encoding: ";
    message += text.substr(0, at);
    for (const char c : text.substr(at, 10)) {
        char escape[8];
        std::snprintf(escape, sizeof escape, " 0x%02X", static_cast<unsigned char>(c));
        message += escape;
    }
    throw Exception(String::FromUtf8(message));
}

std::string_view Checked(const char* text) {
    if (text == nullptr) {
        throw Exception("null pointer");
    }
    const std::size_t invalid = FirstInvalidUtf8(text);
    if (invalid != std::string_view::npos) {
        ThrowInvalidUtf8(text, invalid);
    }
    return text;
}

}  // namespace

}  // namespace detail

using detail::BodyUnlessEmpty;
using detail::StringBody;

CString::CString(detail::Shared<StringBody> body) : body_(std::move(body)) {}
CString::~CString() = default;
CString::operator const char*() const { return body_ ? body_->Bytes() : ""; }

const String String::EMPTY;

String::String() = default;
String::String(const char* str) : body_(BodyUnlessEmpty(detail::Checked(str))) {}
String::String(const String& str)
    : body_(str.body_ && str.body_->UnitsLead() ? BodyUnlessEmpty(str.utf8()) : str.body_) {}
String::String(String&& str) noexcept = default;
String::~String() = default;
String& String::operator=(const String& str) { return *this = String(str); }
String& String::operator=(String&& str) noexcept = default;

Uint32 String::size() const {
    return static_cast<Uint32>(body_ && body_->UnitsLead() ? body_->utf16->units.size() - 1
                                                           : detail::Utf16Length(utf8()));
}

const Char16* String::getChar16Data() const {
    static const Char16 terminator;
    return body_ ? body_->Utf16().units.data() : &terminator;
}

StringBody& String::Editable() {
    if (!body_ || !body_.IsUnique()) {
        body_ = StringBody::Make(utf8());
    }
    return *body_;
}

Char16& String::operator[](Uint32 index) {
    if (index > size()) {
        throw IndexOutOfBoundsException();
    }
    StringBody& body = Editable();
    detail::Utf16Form& form = body.Utf16();
    // What is stale must not outlive a secret that is overwritten unit by unit.
    std::memset(body.Bytes(), 0, body.size);
    form.leads = true;
    return form.units[index];
}

CString String::getCString() const {
    return CString(body_ && body_->UnitsLead() ? BodyUnlessEmpty(utf8()) : body_);
}

std::string_view String::utf8() const { return body_ ? body_->Text() : std::string_view(); }

String String::FromUtf8(std::string_view valid_utf8) {
    String string;
    string.body_ = BodyUnlessEmpty(valid_utf8);
    return string;
}

String String::OfBytes(std::size_t size, char*& bytes) {
    String string;
    if (size > 0) {
        string.body_ = StringBody::OfSize(size);
        bytes = string.body_->Bytes();
    }
    return string;
}

String operator+(const String& s1, const String& s2) {
    return String::FromUtf8(std::string(s1.utf8()).append(s2.utf8()));
}

}  // namespace Pegasus::kalvex
