// JSON (RFC 8259) as it is written, without a tree of it in memory.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>

namespace outputs {

enum class JsonLayout {
    kIndented,
    kOneLine,  ///< without a line break at the end
};

/// The caller opens and closes in order, and gives each member of an object its key. Strings are
/// UTF-8; a byte that is not is written as U+FFFD, and what is invisible or drives a terminal as
/// JSON's own escape.
class JsonWriter {
public:
    JsonWriter(std::ostream& out, JsonLayout layout) : out_(out), layout_(layout) {}
    /// Writes what is left.
    ~JsonWriter();
    JsonWriter(const JsonWriter&) = delete;
    JsonWriter& operator=(const JsonWriter&) = delete;

    void OpenObject() { Open('{'); }
    void CloseObject() { Close('}'); }
    void OpenArray() { Open('['); }
    void CloseArray() { Close(']'); }

    /// The next value's key.
    void Key(std::string_view key);

    void Null() { Literal("null"); }
    void Value(std::string_view text);
    void Value(const char* text) { Value(std::string_view(text)); }
    void Value(bool value) { Literal(value ? "true" : "false"); }
    void Value(std::int64_t number) { Literal(std::to_string(number)); }
    /// As many decimals as are needed, at most three.
    void Value(double number);

    template <class Any>
    void Member(std::string_view key, const Any& value) {
        Key(key);
        Value(value);
    }

private:
    void Open(char bracket);
    void Close(char bracket);
    void Literal(std::string_view text);
    /// What stands before a value or a key.
    void Separate();
    void BreakLine();
    void String(std::string_view text);
    void FlushWhenFull();

    std::ostream& out_;
    const JsonLayout layout_;
    std::string buffer_;
    std::size_t depth_ = 0;
    bool is_first_ = true;
    bool has_key_ = false;
};

}  // namespace outputs
