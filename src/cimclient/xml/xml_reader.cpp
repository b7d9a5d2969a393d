#include "xml/xml_reader.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "common/text/byte_words.h"
#include "common/text/utf8.h"
#include "reply_errors.h"
#include "reply_limits.h"

namespace cimclient {

namespace {

using Pegasus::detail::MemoryCharge;
namespace byte_words = Zentar::byte_words;

constexpr std::size_t kNone = std::string_view::npos;
/// What of an arriving text is read at a time: small enough to stay in the processor's cache.
constexpr std::size_t kWindow = 128UL * 1024;
/// Of a decoded text, beside its bytes.
constexpr std::size_t kTextCost = sizeof(std::string) + 16;
constexpr std::string_view kCDataStart = "<![CDATA[";

enum CharClass : unsigned char {
    kSpaceChar = 1,
    kStartsName = 2,
    kContinuesName = 4,
    kNeedsDecoding = 8,  ///< in an attribute's value
};

constexpr std::array<unsigned char, 256> MakeCharClasses() {
    std::array<unsigned char, 256> classes{};
    for (unsigned c = 0; c < classes.size(); ++c) {
        const bool space = c == ' ' || c == '\t' || c == '\r' || c == '\n';
        const bool letter =
            (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == ':' || c >= 0x80;
        const bool inner = letter || (c >= '0' && c <= '9') || c == '-' || c == '.';
        classes[c] = static_cast<unsigned char>(
            (space ? kSpaceChar : 0) | (letter ? kStartsName : 0) | (inner ? kContinuesName : 0) |
            (space || c == '&' || c >= 0x80 ? kNeedsDecoding : 0));
    }
    return classes;
}

constexpr auto kCharClasses = MakeCharClasses();

bool Is(CharClass wanted, char c) {
    return (kCharClasses[static_cast<unsigned char>(c)] & wanted) != 0;
}

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && Is(kSpaceChar, text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && Is(kSpaceChar, text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

/// Whether the text is ASCII without references.
bool IsPlain(std::string_view text) {
    const char* const end = text.data() + text.size();
    const char* const rest = byte_words::FirstMarked(text.data(), end, [](std::uint64_t word) {
        return byte_words::Equal(word, '&') | byte_words::NotAscii(word);
    });
    return std::none_of(rest, end,
                        [](char c) { return c == '&' || static_cast<unsigned char>(c) >= 0x80; });
}

std::size_t CountLines(std::string_view text) {
    std::size_t lines = 0;
    // Blocks of a fixed size are what the compiler makes good code of.
    constexpr std::size_t kBlock = 128;
    for (; text.size() >= kBlock; text.remove_prefix(kBlock)) {
        unsigned char in_block = 0;
        for (std::size_t i = 0; i < kBlock; ++i) {
            in_block = static_cast<unsigned char>(in_block + (text[i] == '\n'));
        }
        lines += in_block;
    }
    return lines + static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

/// Runs of literal white space count as one blank in an attribute.
std::string Collapsed(std::string_view text) {
    std::string collapsed;
    collapsed.reserve(text.size());
    for (const char c : text) {
        if (!Is(kSpaceChar, c)) {
            collapsed += c;
        } else if (collapsed.empty() || collapsed.back() != ' ') {
            collapsed += ' ';
        }
    }
    return collapsed;
}

}  // namespace

void XmlReader::Rewind(const Checkpoint& checkpoint) {
    has_token_ = false;
    at_ = checkpoint.at;
    depth_ = checkpoint.depth;
    close_pending_ = checkpoint.close_pending;
}

/// Goes back to before the current token. The name of an element that it closed is still there.
void XmlReader::Unread() {
    if (!has_token_) {
        return;
    }
    has_token_ = false;
    at_ = token_at_;
    if (token_.kind == XmlToken::kOpen) {
        --depth_;
        close_pending_ = false;
    } else if (token_.kind == XmlToken::kClose) {
        ++depth_;
        close_pending_ = token_was_pending_;
    }
}

/// Drops what has been read.
void XmlReader::Forget() {
    lines_forgotten_ += CountLines(text_.substr(0, at_));
    window_.erase(0, at_);
    text_ = window_;
    at_ = 0;
}

void XmlReader::KeepOpenNames() {
    kept_names_.resize(std::max(kept_names_.size(), depth_));
    for (std::size_t i = 0; i < depth_; ++i) {
        if (open_elements_[i].data() != kept_names_[i].data()) {
            names_charge_.Add(open_elements_[i].size());
            kept_names_[i] = open_elements_[i];
            open_elements_[i] = kept_names_[i];
        }
    }
}

/// Waits for a good piece, and for as much again as there is, so that reading a large element again
/// and again takes no more than twice the time.
void XmlReader::FetchMore() {
    KeepOpenNames();
    // Blanks at the ends of a text never count, so there is no need to keep any at its beginning.
    if (at_ == blank_from_) {
        at_ = text_.size();
    }
    blank_from_ = kNone;
    Forget();
    const std::size_t wanted = std::max(kWindow, 2 * text_.size());
    const MemoryCharge copy(text_.size());  // that growing may make
    do {
        const std::string_view part = source_();
        is_complete_ = part.empty();
        window_charge_.RaiseTo(text_.size() + part.size());
        window_ += part;
        text_ = window_;
    } while (!is_complete_ && text_.size() < wanted);
}

void XmlReader::RequireComplete() const {
    if (!is_complete_) {
        throw NeedsMore();
    }
}

void XmlReader::PushOpen(std::string_view name) {
    if (depth_ == kMaxXmlDepth) {
        FailForm("Elements are nested too deep");
    }
    open_elements_[depth_++] = name;
}

inline void XmlReader::SkipSpace() {
    std::size_t at = at_;
    while (at < text_.size() && Is(kSpaceChar, text_[at])) {
        ++at;
    }
    if (at == text_.size()) [[unlikely]] {
        blank_from_ = at_;
        RequireComplete();
    }
    at_ = at;
}

inline std::string_view XmlReader::TakeName() {
    const char* const begin = text_.data() + at_;
    const char* const text_end = text_.data() + text_.size();
    // Names of CIM-XML are capital letters, but for a dot.
    const char* end = byte_words::FirstMarked(begin, text_end, byte_words::NotCapital);
    if (end != text_end && Is(end == begin ? kStartsName : kContinuesName, *end)) {
        do {
            ++end;
        } while (end != text_end && Is(kContinuesName, *end));
    }
    if (end == text_end) [[unlikely]] {
        RequireComplete();
    }
    const auto length = static_cast<std::size_t>(end - begin);
    at_ += length;
    return {begin, length};
}

void XmlReader::RequireDeclaration() {
    SkipSpace();
    constexpr std::string_view kStart = "<?xml";
    const std::string_view start = text_.substr(at_, kStart.size());
    if (start == kStart && text_.find("?>", at_) != kNone) {
        SkipPast("?>");
        return;
    }
    if (kStart.starts_with(start)) {
        RequireComplete();
    }
    at_ = 0;
    lines_forgotten_ = 0;
    FailValidation("Expected <?xml ... ?> style declaration");
}

void XmlReader::FailToOpen(const char* name) const {
    FailValidation("Expected open of " + std::string(name) + " element");
}

void XmlReader::ExpectClose(std::string_view name) {
    if (IsClose()) {
        Advance();  // closing elements always match their opening ones
        return;
    }
    const XmlToken& token = Peek();
    const std::string_view found = token.kind == XmlToken::kOpen ? token.name : token.raw_text;
    const std::string got(found.substr(0, kMaxQuotedBytes));
    FailValidation("Expected close of " + std::string(name) + " element, got " + got + " instead");
}

void XmlReader::SkipElement() {
    Advance();
    SkipToClose();
}

void XmlReader::SkipToClose() {
    std::size_t depth = 1;
    while (depth > 0) {
        const XmlToken& token = Peek();
        if (token.kind == XmlToken::kOpen) {
            ++depth;
        } else if (token.kind == XmlToken::kClose) {
            --depth;
        }
        Advance();
    }
}

std::optional<std::string_view> XmlReader::FindAttribute(std::string_view name) {
    for (const XmlAttribute& attribute : Peek().attributes) {
        if (attribute.name == name) {
            return ValueOf(attribute);
        }
    }
    return std::nullopt;
}

std::string_view XmlReader::ValueOf(const XmlAttribute& attribute) {
    if (attribute.is_plain) {
        return attribute.raw_value;
    }
    // One byte that is not UTF-8 makes three.
    attribute_charge_.RaiseTo(3 * attribute.raw_value.size());
    const MemoryCharge copies(2 * attribute.raw_value.size());
    attribute_value_ = Zentar::RepairedUtf8(Resolved(Collapsed(Trimmed(attribute.raw_value))));
    return attribute_value_;
}

std::string XmlReader::Resolved(std::string_view raw) const {
    auto text = ResolveReferences(raw);
    if (!text) {
        FailForm("Malformed reference");
    }
    return std::move(*text);
}

std::string_view XmlReader::ReadText() {
    const XmlToken& token = Peek();
    if (token.kind != XmlToken::kText && token.kind != XmlToken::kCData) {
        return {};
    }
    std::string_view text = token.raw_text;
    if (IsPlain(text)) {
        Advance();
        return text;
    }
    if (token.kind == XmlToken::kText && text.find('&') != kNone) {
        texts_charge_.Add(kTextCost + text.size());
        text = decoded_texts_.emplace_back(Resolved(text));
    }
    Advance();
    if (Zentar::FirstInvalidUtf8(text) != kNone) {
        texts_charge_.Add(kTextCost + Zentar::RepairedUtf8Size(text));
        text = decoded_texts_.emplace_back(Zentar::RepairedUtf8(text));
    }
    return text;
}

void XmlReader::Read() {
    token_at_ = at_;
    token_was_pending_ = close_pending_;
    if (!close_pending_) {
        ReadToken();
        return;
    }
    close_pending_ = false;
    token_.kind = XmlToken::kClose;
    --depth_;
}

void XmlReader::ReadToken() {
    while (true) {
        const std::size_t begin = at_;
        SkipSpace();
        if (at_ == text_.size()) {
            if (depth_ > 0) {
                FailForm("One or more tags are still open");
            }
            token_.kind = XmlToken::kEnd;
            return;
        }
        if (text_[at_] != '<') {
            return ReadText(begin);
        }
        if (text_.size() - at_ < kCDataStart.size()) {
            RequireComplete();
        }
        switch (CharAt(at_ + 1)) {
            case '/':
                return ReadClose();
            case '?':
                SkipPast("?>");
                break;
            case '!':
                if (ReadDeclaration()) {
                    return;
                }
                break;
            default:
                return ReadOpen();
        }
    }
}

void XmlReader::ReadText(std::size_t begin) {
    const std::size_t end = text_.find('<', at_);
    if (end == kNone) [[unlikely]] {
        RequireComplete();
    }
    at_ = end == kNone ? text_.size() : end;
    token_.kind = XmlToken::kText;
    token_.raw_text = Trimmed(text_.substr(begin, at_ - begin));
}

/// What begins with "<!": false when it was a comment, which gives no token.
bool XmlReader::ReadDeclaration() {
    if (StartsWith("<!--")) {
        SkipPast("-->");
        return false;
    }
    if (!StartsWith(kCDataStart)) {
        ++at_;
        FailValidation("Expected open of CIM element");
    }
    at_ += kCDataStart.size();
    const std::size_t begin = at_;
    SkipPast("]]>");
    token_.kind = XmlToken::kCData;
    token_.raw_text = text_.substr(begin, at_ - begin - 3);
    return true;
}

void XmlReader::ReadOpen() {
    ++at_;
    token_.name = TakeName();
    if (token_.name.empty()) {
        FailForm("Bad opening element");
    }
    PushOpen(token_.name);
    ReadAttributes();
    token_.kind = XmlToken::kOpen;
}

void XmlReader::ReadAttributes() {
    token_.attributes.clear();
    while (true) {
        SkipSpace();
        if (CharAt(at_) == '>') {
            ++at_;
            return;
        }
        if (at_ + 1 == text_.size()) {
            RequireComplete();
        }
        if (StartsWith("/>")) {
            at_ += 2;
            close_pending_ = true;
            return;
        }
        ReadAttribute();
    }
}

inline void XmlReader::AddAttribute(const XmlAttribute& attribute) {
    if (token_.attributes.size() == kMaxXmlAttributes) {
        FailForm("Too many attributes");
    }
    token_.attributes.push_back(attribute);
}

/// The usual attribute: NAME="value" with nothing between, and no character in the value that has
/// to be looked at.
bool XmlReader::TakePlainAttribute() {
    const char* const begin = text_.data() + at_;
    const char* const end = text_.data() + text_.size();
    const char* const name_end = byte_words::FirstMarked(begin, end, byte_words::NotCapital);
    if (end - name_end < 2 || name_end == begin || name_end[0] != '=' || name_end[1] != '"') {
        return false;
    }
    const char* const value = name_end + 2;
    const char* const value_end = byte_words::FirstMarked(value, end, [](std::uint64_t word) {
        return byte_words::Equal(word, '"') | byte_words::Equal(word, '&') |
               byte_words::NotGraphic(word);
    });
    if (value_end == end || *value_end != '"') {
        return false;
    }
    at_ = static_cast<std::size_t>(value_end - text_.data());
    AddAttribute({{begin, name_end}, {value, value_end}, true});
    ++at_;
    return true;
}

void XmlReader::ReadAttribute() {
    if (TakePlainAttribute()) {
        return;
    }
    const std::string_view name = TakeName();
    SkipSpace();
    if (name.empty() || CharAt(at_) != '=') {
        FailForm("Bad attribute name");
    }
    ++at_;
    SkipSpace();
    const char quote = CharAt(at_);
    if (quote != '"' && quote != '\'') {
        FailForm("Bad attribute value");
    }
    std::size_t end = ++at_;
    unsigned classes = 0;
    while (end < text_.size() && text_[end] != quote) {
        classes |= kCharClasses[static_cast<unsigned char>(text_[end])];
        ++end;
    }
    const std::string_view value = text_.substr(at_, end - at_);
    at_ = end;
    if (end == text_.size()) {
        RequireComplete();
        FailForm("Bad attribute value");
    }
    AddAttribute({name, value, (classes & kNeedsDecoding) == 0});
    ++at_;
}

/// The usual closing element: that of the innermost open one, without white space.
bool XmlReader::TakeExpectedClose() {
    if (depth_ == 0) {
        return false;
    }
    const std::string_view name = InnermostOpen();
    const std::size_t end = at_ + 2 + name.size();
    if (CharAt(end) != '>' ||
        !byte_words::SameBytes(text_.data() + at_ + 2, name.data(), name.size())) {
        return false;
    }
    at_ = end + 1;
    token_.kind = XmlToken::kClose;
    token_.name = name;
    --depth_;
    return true;
}

void XmlReader::ReadClose() {
    if (TakeExpectedClose()) {
        return;
    }
    at_ += 2;
    const std::string_view name = TakeName();
    SkipSpace();
    if (CharAt(at_) != '>') {
        FailForm("Bad closing element");
    }
    ++at_;
    if (depth_ == 0 || InnermostOpen() != name) {
        FailForm("Closing element does not match opening element");
    }
    --depth_;
    token_.kind = XmlToken::kClose;
    token_.name = name;
}

void XmlReader::SkipPast(std::string_view end) {
    const std::size_t found = text_.find(end, at_);
    if (found == kNone) {
        RequireComplete();
        at_ = text_.size();
        FailForm("One or more tags are still open");
    }
    at_ = found + end.size();
}

std::string XmlReader::OnLine() const {
    return ": on line " + std::to_string(1 + lines_forgotten_ + CountLines(text_.substr(0, at_)));
}

void XmlReader::FailForm(const char* what) const { throw XmlError{{what + OnLine()}}; }

void XmlReader::FailValidation(const std::string& what) const {
    throw XmlError{{"Validation error" + OnLine() + ": " + what}};
}

void XmlReader::FailSemantic(const std::string& what) const {
    throw XmlError{{"Semantic error" + OnLine() + ": " + what}};
}

}  // namespace cimclient
