#include "outputs/json/json_writer.h"

#include <algorithm>
#include <cstdio>
#include <ostream>

#include "common/text/visible_text.h"

namespace outputs {

namespace {

constexpr std::size_t kIndent = 2;
constexpr std::size_t kMostBuffered = 64UL * 1024;

std::string Utf16Escape(unsigned unit) {
    char text[8];
    std::snprintf(text, sizeof text, "\\u%04x", unit);
    return text;
}

/// Two units beyond the Basic Multilingual Plane.
std::string Escape(std::int32_t code) {
    constexpr unsigned kFirstPair = 0x10000;
    const auto character = static_cast<unsigned>(code);
    if (character < kFirstPair) {
        return Utf16Escape(character);
    }
    const unsigned rest = character - kFirstPair;
    return Utf16Escape(0xD800 + (rest >> 10U)) + Utf16Escape(0xDC00 + (rest & 0x3FFU));
}

bool IsPlain(char character) {
    return character >= ' ' && character <= '~' && character != '"' && character != '\\';
}

void AppendEscaped(std::string& json, const Zentar::TextUnit& unit) {
    switch (unit.code) {
        case '"':
            json += "\\\"";
            return;
        case '\\':
            json += "\\\\";
            return;
        case '\n':
            json += "\\n";
            return;
        case '\r':
            json += "\\r";
            return;
        case '\t':
            json += "\\t";
            return;
        default:
            break;
    }
    if (unit.code < 0) {
        json += "\uFFFD";
    } else if (Zentar::IsHidden(unit.code)) {
        json += Escape(unit.code);
    } else {
        json += unit.bytes;
    }
}

}  // namespace

JsonWriter::~JsonWriter() {
    out_.write(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
}

void JsonWriter::Key(std::string_view key) {
    Separate();
    String(key);
    buffer_ += layout_ == JsonLayout::kIndented ? ": " : ":";
    has_key_ = true;
}

void JsonWriter::Value(std::string_view text) {
    Separate();
    String(text);
}

void JsonWriter::Value(double number) {
    char text[64];
    std::snprintf(text, sizeof text, "%.3f", number);
    std::string_view shortest(text);
    shortest = shortest.substr(0, shortest.find_last_not_of('0') + 1);
    Literal(shortest.ends_with('.') ? shortest.substr(0, shortest.size() - 1) : shortest);
}

void JsonWriter::Open(char bracket) {
    Separate();
    buffer_ += bracket;
    ++depth_;
    is_first_ = true;
}

void JsonWriter::Close(char bracket) {
    --depth_;
    if (!is_first_) {
        BreakLine();
    }
    buffer_ += bracket;
    is_first_ = false;
    FlushWhenFull();
}

void JsonWriter::Literal(std::string_view text) {
    Separate();
    buffer_ += text;
}

void JsonWriter::Separate() {
    if (has_key_) {
        has_key_ = false;
        return;
    }
    if (depth_ == 0) {
        return;
    }
    if (!is_first_) {
        buffer_ += ',';
    }
    is_first_ = false;
    BreakLine();
}

void JsonWriter::BreakLine() {
    if (layout_ == JsonLayout::kIndented) {
        buffer_ += '\n';
        buffer_.append(depth_ * kIndent, ' ');
    }
}

void JsonWriter::String(std::string_view text) {
    buffer_ += '"';
    while (!text.empty()) {
        const auto plain = static_cast<std::size_t>(
            std::find_if_not(text.begin(), text.end(), IsPlain) - text.begin());
        buffer_ += text.substr(0, plain);
        text.remove_prefix(plain);
        if (!text.empty()) {
            const Zentar::TextUnit unit = Zentar::FirstUnit(text);
            AppendEscaped(buffer_, unit);
            text.remove_prefix(unit.bytes.size());
        }
    }
    buffer_ += '"';
    FlushWhenFull();
}

void JsonWriter::FlushWhenFull() {
    if (buffer_.size() >= kMostBuffered) {
        out_.write(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
        buffer_.clear();
    }
}

}  // namespace outputs
