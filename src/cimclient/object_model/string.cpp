#include "Pegasus/Common/String.h"

#include <algorithm>
#include <atomic>
#include <cctype>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <vector>

#include "Pegasus/Common/Exception.h"
#include "ascii.h"
#include "object_model/utf.h"

namespace Pegasus::kalvex {

namespace detail {

/// The UTF-16 form of a text.
struct Utf16Form {
    std::vector<Char16> units;  ///< with a terminating 0
    /// The user was given a reference to a unit, through which the text may change at any time.
    bool leads = false;
    mutable std::string utf8;  ///< of the units, once they lead
};

/// The text of a String: this head, the UTF-8 bytes and a 0 in one piece of memory. UTF-8 leads,
/// unless a reference to a unit is out: then the units lead, and the body is no longer shared.
struct StringBody : Counted {
    static StringBody* Make(std::string_view text);
    ~StringBody() { delete utf16.load(std::memory_order_relaxed); }

    char* Bytes() { return reinterpret_cast<char*>(this + 1); }
    std::string_view Text() { return {Bytes(), size}; }
    bool UnitsLead() const {
        const Utf16Form* form = utf16.load(std::memory_order_acquire);
        return form != nullptr && form->leads;
    }
    /// Made on first use.
    Utf16Form& Utf16();
    std::string_view CurrentText();

    Uint32 size : 31 = 0;
    Uint32 ascii : 1 = 0;
    std::atomic<Utf16Form*> utf16{nullptr};
};

StringBody* StringBody::Make(std::string_view text) {
    constexpr std::size_t kMaxBytes = 0x7FFFFFFF;
    if (text.size() > kMaxBytes) {
        throw std::bad_alloc();
    }
    auto* body = ::new (ArenaAllocate(sizeof(StringBody) + text.size() + 1)) StringBody;
    body->size = static_cast<Uint32>(text.size()) & kMaxBytes;
    body->ascii = IsAscii(text);
    text.copy(body->Bytes(), text.size());
    body->Bytes()[text.size()] = '\0';
    return body;
}

Utf16Form& StringBody::Utf16() {
    if (utf16.load(std::memory_order_acquire) == nullptr) {
        auto made = std::make_unique<Utf16Form>();
        made->units = ToUtf16(Text());
        made->units.push_back(Char16());
        Utf16Form* expected = nullptr;
        if (utf16.compare_exchange_strong(expected, made.get())) {
            made.release();
        }
    }
    return *utf16.load(std::memory_order_acquire);
}

std::string_view StringBody::CurrentText() {
    if (!UnitsLead()) {
        return Text();
    }
    const Utf16Form& form = Utf16();
    form.utf8 = ToUtf8(form.units.data(), form.units.size() - 1);
    return form.utf8;
}

namespace {

Shared<StringBody> MakeBody(std::string_view text) {
    return text.empty() ? Shared<StringBody>() : Shared<StringBody>(StringBody::Make(text));
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

std::string_view Checked(std::string_view text) {
    const std::size_t invalid = FirstInvalidUtf8(text);
    if (invalid != std::string_view::npos) {
        ThrowInvalidUtf8(text, invalid);
    }
    return text;
}

const char* NotNull(const char* text) {
    if (text == nullptr) {
        throw NullPointer();
    }
    return text;
}

std::size_t Length(const Char16* units) {
    std::size_t length = 0;
    while (Uint16(units[length]) != 0) {
        ++length;
    }
    return length;
}

int Sign(int comparison) { return (comparison > 0) - (comparison < 0); }

using cimclient::LowerCase;

std::string LowerCase(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) {
        c = LowerCase(c);
    }
    return lower;
}

}  // namespace

}  // namespace detail

using detail::MakeBody;
using detail::StringBody;

CString::CString() = default;
CString::CString(const CString&) = default;
CString::CString(CString&&) noexcept = default;
CString::CString(detail::Shared<StringBody> body) : body_(std::move(body)) {}
CString::~CString() = default;
CString& CString::operator=(const CString&) = default;

CString::operator const char*() const { return body_ ? body_->Bytes() : nullptr; }

const String String::EMPTY;

String::String() = default;
String::String(const String& str) : body_(str.body_) {
    if (body_ && body_->UnitsLead()) {
        body_ = MakeBody(str.body_->CurrentText());
    }
}
String::String(String&& str) noexcept = default;
String::String(const String& str, Uint32 n) : String(str.subString(0, n)) {
    if (n > str.size()) {
        throw IndexOutOfBoundsException();
    }
}
String::String(const Char16* str) : String(str, static_cast<Uint32>(detail::Length(str))) {}
String::String(const Char16* str, Uint32 n) : body_(MakeBody(detail::ToUtf8(str, n))) {}
String::String(const char* str) : body_(MakeBody(detail::Checked(detail::NotNull(str)))) {}
String::String(const char* str, Uint32 n)
    : body_(MakeBody(detail::Checked(std::string_view(detail::NotNull(str), n)))) {}
String::String(const String& s1, const String& s2) : String(s1) { append(s2); }
String::~String() = default;

String& String::operator=(const String& str) {
    body_ = String(str).body_;
    return *this;
}
String& String::operator=(String&& str) noexcept = default;
String& String::operator=(const char* str) { return *this = String(str); }
String& String::assign(const String& str) { return *this = str; }
String& String::assign(const char* str) { return *this = String(str); }
String& String::assign(const char* str, Uint32 n) { return *this = String(str, n); }
String& String::assign(const Char16* str) { return *this = String(str); }
String& String::assign(const Char16* str, Uint32 n) { return *this = String(str, n); }

void String::clear() { body_ = {}; }

void String::reserveCapacity(Uint32) {}

Uint32 String::size() const {
    if (!body_) {
        return 0;
    }
    if (body_->UnitsLead()) {
        return static_cast<Uint32>(body_->Utf16().units.size() - 1);
    }
    return body_->ascii ? body_->size : static_cast<Uint32>(detail::Utf16Length(body_->Text()));
}

const Char16* String::getChar16Data() const {
    static const Char16 terminator;
    return body_ ? body_->Utf16().units.data() : &terminator;
}

CString String::getCString() const {
    static const detail::Shared<StringBody> empty(StringBody::Make(""));
    if (!body_) {
        return CString(empty);
    }
    if (body_->UnitsLead()) {
        return CString(detail::Shared<StringBody>(StringBody::Make(body_->CurrentText())));
    }
    return CString(body_);
}

StringBody& String::Editable() {
    if (!body_) {
        body_ = detail::Shared<StringBody>(StringBody::Make(""));
    } else if (!body_.IsUnique()) {
        body_ = detail::Shared<StringBody>(StringBody::Make(body_->CurrentText()));
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

const Char16 String::operator[](Uint32 index) const {
    if (index > size()) {
        throw IndexOutOfBoundsException();
    }
    if (body_ && body_->ascii && !body_->UnitsLead()) {
        return static_cast<unsigned char>(body_->Bytes()[index]);
    }
    return getChar16Data()[index];
}

String& String::append(const Char16& c) { return append(&c, 1); }
String& String::append(const Char16* str, Uint32 n) { return append(String(str, n)); }
String& String::append(const char* str) { return append(String(str)); }
String& String::append(const char* str, Uint32 n) { return append(String(str, n)); }

String& String::append(const String& str) {
    if (str.body_) {
        std::string text(utf8());
        text += str.utf8();
        body_ = MakeBody(text);
    }
    return *this;
}

void String::remove(Uint32 index, Uint32 count) {
    const Uint32 length = size();
    if (index > length) {
        throw IndexOutOfBoundsException();
    }
    const Uint32 removed = std::min(count, length - index);
    *this = subString(0, index) + subString(index + removed);
}

String String::subString(Uint32 index, Uint32 n) const {
    const Uint32 length = size();
    if (index >= length) {
        return {};
    }
    const Uint32 count = std::min(n, length - index);
    if (body_->ascii && !body_->UnitsLead()) {
        return FromUtf8(utf8().substr(index, count));
    }
    return String(getChar16Data() + index, count);
}

Uint32 String::find(Char16 c) const { return find(0, c); }

Uint32 String::find(Uint32 index, Char16 c) const {
    const Uint32 length = size();
    for (Uint32 i = index; i < length; ++i) {
        if ((*this)[i] == c) {
            return i;
        }
    }
    return PEG_NOT_FOUND;
}

Uint32 String::find(const String& s) const {
    const std::string_view text = utf8();
    const std::size_t at = text.find(s.utf8());
    return at == std::string_view::npos
               ? PEG_NOT_FOUND
               : static_cast<Uint32>(detail::Utf16Length(text.substr(0, at)));
}

Uint32 String::find(const char* s) const { return find(String(s)); }

Uint32 String::reverseFind(Char16 c) const {
    for (Uint32 i = size(); i > 0; --i) {
        if ((*this)[i - 1] == c) {
            return i - 1;
        }
    }
    return PEG_NOT_FOUND;
}

void String::toLower() { *this = FromUtf8(detail::LowerCase(utf8())); }

void String::toUpper() {
    std::string upper(utf8());
    std::transform(upper.begin(), upper.end(), upper.begin(), [](char c) {
        return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    });
    *this = FromUtf8(upper);
}

void String::appendPrintf(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    va_end(arguments);
    std::vector<char> text(static_cast<std::size_t>(std::max(length, 0)) + 1);
    std::vsnprintf(text.data(), text.size(), format, again);
    va_end(again);
    append(text.data());
}

int String::compare(const String& s1, const String& s2, Uint32 n) {
    return compare(s1.subString(0, n), s2.subString(0, n));
}

int String::compare(const String& s1, const String& s2) {
    const bool ascii = (!s1.body_ || s1.body_->ascii) && (!s2.body_ || s2.body_->ascii);
    if (ascii) {
        return detail::Sign(s1.utf8().compare(s2.utf8()));
    }
    const Char16* a = s1.getChar16Data();
    const Char16* b = s2.getChar16Data();
    const Uint32 a_size = s1.size();
    const Uint32 b_size = s2.size();
    for (Uint32 i = 0; i < std::min(a_size, b_size); ++i) {
        if (a[i] != b[i]) {
            return Uint16(a[i]) < Uint16(b[i]) ? -1 : 1;
        }
    }
    return (a_size > b_size) - (a_size < b_size);
}

int String::compareNoCase(const String& s1, const String& s2) {
    return compare(FromUtf8(detail::LowerCase(s1.utf8())), FromUtf8(detail::LowerCase(s2.utf8())));
}

Boolean String::equal(const String& s1, const String& s2) {
    return s1.body_.get() == s2.body_.get() || s1.utf8() == s2.utf8();
}

Boolean String::equalNoCase(const String& s1, const String& s2) {
    const std::string_view a = s1.utf8();
    const std::string_view b = s2.utf8();
    return a.data() == b.data() ||
           std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
               return x == y || detail::LowerCase(x) == detail::LowerCase(y);
           });
}

std::string_view String::utf8() const { return body_ ? body_->CurrentText() : std::string_view(); }

String String::FromUtf8(std::string_view valid_utf8) {
    String string;
    string.body_ = MakeBody(valid_utf8);
    return string;
}

Boolean operator==(const String& s1, const char* s2) { return s1.utf8() == s2; }
Boolean operator==(const char* s1, const String& s2) { return s2 == s1; }
Boolean operator!=(const String& s1, const String& s2) { return !(s1 == s2); }
Boolean operator!=(const String& s1, const char* s2) { return !(s1 == s2); }
Boolean operator!=(const char* s1, const String& s2) { return !(s2 == s1); }
Boolean operator<(const String& s1, const String& s2) { return String::compare(s1, s2) < 0; }
Boolean operator<=(const String& s1, const String& s2) { return String::compare(s1, s2) <= 0; }
Boolean operator>(const String& s1, const String& s2) { return String::compare(s1, s2) > 0; }
Boolean operator>=(const String& s1, const String& s2) { return String::compare(s1, s2) >= 0; }
String operator+(const String& s1, const String& s2) { return String(s1, s2); }
String operator+(const String& s1, const char* s2) { return String(s1, String(s2)); }
String operator+(const char* s1, const String& s2) { return String(String(s1), s2); }

std::ostream& operator<<(std::ostream& os, const String& str) {
    for (Uint32 i = 0; i < str.size(); ++i) {
        const Uint16 unit = str[i];
        if (unit < 256) {
            os.put(static_cast<char>(unit));
        } else {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\x%04X", unit);
            os << escape;
        }
    }
    return os;
}

}  // namespace Pegasus::kalvex
