#include "xml/xml_reader.h"

#include <algorithm>
#include <stdexcept>

#include "Pegasus/Client/CIMClientException.h"
#include "object_model/utf.h"
#include "reply_limits.h"

namespace cimclient {

namespace {

constexpr std::size_t kNone = std::string_view::npos;
constexpr std::string_view kSpace = " \t\r\n";

bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

bool StartsName(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || byte == '_' ||
           byte == ':' || byte >= 0x80;
}

bool ContinuesName(char c) {
    return StartsName(c) || (c >= '0' && c <= '9') || c == '-' || c == '.';
}

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kSpace);
    if (first == kNone) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kSpace) - first + 1);
}

/// Runs of literal white space count as one blank in an attribute.
std::string Collapsed(std::string_view text) {
    std::string collapsed;
    for (const char c : text) {
        if (!IsSpace(c)) {
            collapsed += c;
        } else if (collapsed.empty() || collapsed.back() != ' ') {
            collapsed += ' ';
        }
    }
    return collapsed;
}

[[noreturn]] void Throw(const std::string& message) {
    throw Pegasus::CIMClientXmlException(
        Pegasus::String::FromUtf8(Pegasus::detail::RepairedUtf8(message)));
}

}  // namespace

XmlReader::XmlReader(std::string_view text) : text_(text) {}

void XmlReader::RequireDeclaration() {
    SkipSpace();
    if (!StartsWith("<?xml") || text_.find("?>", at_) == kNone) {
        at_ = 0;
        FailValidation("Expected <?xml ... ?> style declaration");
    }
    SkipPast("?>");
}

const XmlToken& XmlReader::Peek() {
    if (!has_token_) {
        Read();
        has_token_ = true;
    }
    return token_;
}

void XmlReader::Advance() {
    Peek();
    has_token_ = false;
}

void XmlReader::ExpectOpen(std::string_view name) {
    if (!IsOpen(name)) {
        FailValidation("Expected open of " + std::string(name) + " element");
    }
    Advance();
}

void XmlReader::ExpectClose(std::string_view name) {
    if (IsClose()) {
        Advance();  // closing elements always match their opening ones
        return;
    }
    const XmlToken& token = Peek();
    const std::string got(token.kind == XmlToken::kOpen ? token.name : token.raw_text);
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

const std::string* XmlReader::FindAttribute(std::string_view name) {
    for (const XmlAttribute& attribute : Peek().attributes) {
        if (attribute.name == name) {
            try {
                attribute_value_ = Pegasus::detail::RepairedUtf8(
                    ResolveReferences(Collapsed(Trimmed(attribute.raw_value))));
            } catch (const std::invalid_argument& e) {
                FailForm(e.what());
            }
            return &attribute_value_;
        }
    }
    return nullptr;
}

std::string XmlReader::ReadText() {
    const XmlToken& token = Peek();
    if (token.kind != XmlToken::kText && token.kind != XmlToken::kCData) {
        return {};
    }
    std::string text(token.raw_text);
    if (token.kind == XmlToken::kText && text.find('&') != std::string::npos) {
        try {
            text = ResolveReferences(text);
        } catch (const std::invalid_argument& e) {
            FailForm(e.what());
        }
    }
    Advance();
    if (Pegasus::detail::FirstInvalidUtf8(text) != kNone) {
        text = Pegasus::detail::RepairedUtf8(text);
    }
    return text;
}

void XmlReader::Read() {
    if (close_pending_) {
        close_pending_ = false;
        token_.kind = XmlToken::kClose;
        token_.attributes.clear();
        open_elements_.pop_back();
        return;
    }
    do {
        const std::size_t begin = at_;
        SkipSpace();
        if (at_ == text_.size()) {
            if (!open_elements_.empty()) {
                FailForm("One or more tags are still open");
            }
            token_.kind = XmlToken::kEnd;
            return;
        }
        if (text_[at_] != '<') {
            ReadText(begin);
            return;
        }
    } while (SkipNonElement());
    ReadMarkup();
}

/// Steps over a comment or processing instruction.
bool XmlReader::SkipNonElement() {
    if (StartsWith("<!--")) {
        SkipPast("-->");
        return true;
    }
    if (StartsWith("<?")) {
        SkipPast("?>");
        return true;
    }
    return false;
}

void XmlReader::ReadMarkup() {
    if (StartsWith("<![CDATA[")) {
        ReadCData();
    } else if (StartsWith("</")) {
        ReadClose();
    } else {
        ReadOpen();
    }
}

void XmlReader::ReadText(std::size_t begin) {
    const std::size_t end = text_.find('<', at_);
    at_ = end == kNone ? text_.size() : end;
    token_.kind = XmlToken::kText;
    token_.raw_text = Trimmed(text_.substr(begin, at_ - begin));
}

void XmlReader::ReadCData() {
    at_ += std::string_view("<![CDATA[").size();
    const std::size_t begin = at_;
    SkipPast("]]>");
    token_.kind = XmlToken::kCData;
    token_.raw_text = text_.substr(begin, at_ - begin - 3);
}

void XmlReader::ReadOpen() {
    ++at_;
    token_.name = TakeName();
    if (token_.name.empty()) {
        if (StartsWith("!")) {
            FailValidation("Expected open of CIM element");
        }
        FailForm("Bad opening element");
    }
    if (open_elements_.size() == kMaxXmlDepth) {
        FailForm("Elements are nested too deep");
    }
    open_elements_.push_back(token_.name);
    ReadAttributes();
    token_.kind = XmlToken::kOpen;
}

void XmlReader::ReadAttributes() {
    token_.attributes.clear();
    while (true) {
        SkipSpace();
        if (StartsWith(">")) {
            ++at_;
            return;
        }
        if (StartsWith("/>")) {
            at_ += 2;
            close_pending_ = true;
            return;
        }
        const std::string_view name = TakeName();
        SkipSpace();
        if (name.empty() || !StartsWith("=")) {
            FailForm("Bad attribute name");
        }
        ++at_;
        SkipSpace();
        if (!StartsWith("\"") && !StartsWith("'")) {
            FailForm("Bad attribute value");
        }
        const std::size_t end = text_.find(text_[at_], at_ + 1);
        if (end == kNone) {
            at_ = text_.size();
            FailForm("Bad attribute value");
        }
        token_.attributes.push_back({name, text_.substr(at_ + 1, end - at_ - 1)});
        at_ = end + 1;
    }
}

void XmlReader::ReadClose() {
    at_ += 2;
    const std::string_view name = TakeName();
    SkipSpace();
    if (!StartsWith(">")) {
        FailForm("Bad closing element");
    }
    ++at_;
    if (open_elements_.empty() || open_elements_.back() != name) {
        FailForm("Closing element does not match opening element");
    }
    open_elements_.pop_back();
    token_.kind = XmlToken::kClose;
    token_.name = name;
    token_.attributes.clear();
}

void XmlReader::SkipPast(std::string_view end) {
    const std::size_t found = text_.find(end, at_);
    if (found == kNone) {
        at_ = text_.size();
        FailForm("One or more tags are still open");
    }
    at_ = found + end.size();
}

void XmlReader::SkipSpace() {
    while (at_ < text_.size() && IsSpace(text_[at_])) {
        ++at_;
    }
}

std::string_view XmlReader::TakeName() {
    const std::size_t begin = at_;
    if (at_ < text_.size() && StartsName(text_[at_])) {
        do {
            ++at_;
        } while (at_ < text_.size() && ContinuesName(text_[at_]));
    }
    return text_.substr(begin, at_ - begin);
}

std::string XmlReader::OnLine() const {
    const std::string_view read = text_.substr(0, at_);
    return ": on line " + std::to_string(1 + std::count(read.begin(), read.end(), '\n'));
}

void XmlReader::FailForm(const char* what) const { Throw(what + OnLine()); }

void XmlReader::FailValidation(const std::string& what) const {
    Throw("Validation error" + OnLine() + ": " + what);
}

void XmlReader::FailSemantic(const std::string& what) const {
    Throw("Semantic error" + OnLine() + ": " + what);
}

}  // namespace cimclient
