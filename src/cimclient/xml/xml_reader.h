// A pull reader for the XML that CIM servers send (DSP0201).
//
// It differs from a general parser where servers do: raw control characters and bytes that are not
// UTF-8 pass, and white space written as a reference differs from literal white space. There are no
// entities but the five predefined ones and no DOCTYPE.
//
// A text may be read while it arrives: what has been read is forgotten, so that memory is needed
// for the part at hand only.
#pragma once

#include <array>
#include <cstring>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "object_model/memory_budget.h"
#include "reply_limits.h"

namespace cimclient {

struct XmlAttribute {
    std::string_view name;
    std::string_view raw_value;
    bool is_plain;  ///< the raw value is the value
};

struct XmlToken {
    enum Kind { kOpen, kClose, kText, kCData, kEnd };

    Kind kind = kEnd;
    std::string_view name;      ///< of kOpen and kClose
    std::string_view raw_text;  ///< of kText without literal white space at its ends, and of kCData
    std::vector<XmlAttribute> attributes;  ///< of kOpen
};

/// Compares with a literal, whose length the compiler knows.
template <std::size_t Size>
bool Is(std::string_view text, const char (&literal)[Size]) {
    return text.size() == Size - 1 && std::memcmp(text.data(), literal, Size - 1) == 0;
}

/// Reads tokens one at a time. An empty element gives an open and a close token; comments,
/// processing instructions and white space between elements give none. Everything that is not well
/// formed throws XmlError, with the line.
class XmlReader {
public:
    /// Gives the next bytes of a text, and an empty view at its end.
    using Source = std::function<std::string_view()>;

    /// The text must outlive the reader and all views that it gave.
    explicit XmlReader(std::string_view text) : text_(text), is_complete_(true) {}
    /// Everything is to be read within Retrying.
    explicit XmlReader(Source source) : source_(std::move(source)) {}
    XmlReader(const XmlReader&) = delete;
    XmlReader& operator=(const XmlReader&) = delete;

    /// Calls `read`, from the same place again whenever the text that has arrived ends before it is
    /// done. Views given before are no longer valid.
    template <class Read>
    auto Retrying(Read read) -> decltype(read()) {
        Checkpoint checkpoint = MakeCheckpoint();
        while (true) {
            try {
                return read();
            } catch (const NeedsMore&) {
                Rewind(checkpoint);
                FetchMore();
                checkpoint.at = at_;
            }
        }
    }

    /// The text must begin with an XML declaration.
    void RequireDeclaration();

    /// The current token; stays until Advance.
    const XmlToken& Peek() {
        if (!has_token_) {
            Read();
            has_token_ = true;
        }
        return token_;
    }
    void Advance() {
        Peek();
        has_token_ = false;
    }

    template <std::size_t Size>
    bool IsOpen(const char (&name)[Size]) {
        return Peek().kind == XmlToken::kOpen && Is(token_.name, name);
    }
    bool IsOpen(std::string_view name) {
        return Peek().kind == XmlToken::kOpen && token_.name == name;
    }
    bool IsClose() { return Peek().kind == XmlToken::kClose; }

    /// Steps over an opening element; throws when something else stands there.
    template <std::size_t Size>
    void ExpectOpen(const char (&name)[Size]) {
        if (!IsOpen(name)) {
            FailToOpen(name);
        }
        Advance();
    }
    /// Steps over the closing element of `name`; throws when something else stands there.
    void ExpectClose(std::string_view name);
    /// At an opening element: steps over it with all it holds.
    void SkipElement();

    /// Inside an element: steps over what is left of it, its closing element included.
    void SkipToClose();

    /// The current opening element's attribute. Valid until another one is asked for.
    std::optional<std::string_view> FindAttribute(std::string_view name);

    /// Calls `take` with name and value of each attribute of the current opening element. Of two
    /// with one name the first is given last, so that it counts.
    template <class Take>
    void ForEachAttribute(Take take) {
        const std::vector<XmlAttribute>& attributes = Peek().attributes;
        for (auto attribute = attributes.rbegin(); attribute != attributes.rend(); ++attribute) {
            take(attribute->name, ValueOf(*attribute));
        }
    }

    /// After an opening element: the text it holds, empty without any. Lives until ForgetTexts.
    std::string_view ReadText();
    void ForgetTexts() {
        if (!decoded_texts_.empty()) {
            decoded_texts_.clear();
            texts_charge_.Clear();
        }
    }

    /// Throw XmlError: "Validation error: on line N: ..." about structure,
    /// "Semantic error: on line N: ..." about values.
    [[noreturn]] void FailValidation(const std::string& what) const;
    [[noreturn]] void FailSemantic(const std::string& what) const;

private:
    /// Thrown where the text that has arrived ends.
    struct NeedsMore {};
    struct Checkpoint {
        std::size_t at;
        std::size_t depth;
        bool close_pending;
    };

    Checkpoint MakeCheckpoint() {
        Unread();
        return {at_, depth_, close_pending_};
    }
    void Rewind(const Checkpoint& checkpoint);
    void Unread();
    void Forget();
    void KeepOpenNames();
    void FetchMore();
    /// Called where the text ends.
    void RequireComplete() const;
    void PushOpen(std::string_view name);
    std::string_view InnermostOpen() const { return open_elements_[depth_ - 1]; }

    void Read();
    void ReadToken();
    void ReadText(std::size_t begin);
    bool ReadDeclaration();
    void ReadOpen();
    void ReadClose();
    void ReadAttributes();
    void ReadAttribute();
    bool TakePlainAttribute();
    void AddAttribute(const XmlAttribute& attribute);
    std::string_view ValueOf(const XmlAttribute& attribute);
    std::string Resolved(std::string_view raw) const;
    void SkipPast(std::string_view end);
    void SkipSpace();
    std::string_view TakeName();
    bool TakeExpectedClose();
    bool StartsWith(std::string_view prefix) const {
        return text_.substr(at_, prefix.size()) == prefix;
    }
    /// 0 beyond the end.
    char CharAt(std::size_t at) const { return at < text_.size() ? text_[at] : '\0'; }
    [[noreturn]] void FailToOpen(const char* name) const;
    [[noreturn]] void FailForm(const char* what) const;
    std::string OnLine() const;

    Source source_;
    std::string window_;  ///< what of a text that arrives is at hand
    std::string_view text_;
    bool is_complete_ = false;
    std::size_t lines_forgotten_ = 0;
    std::size_t blank_from_ = std::string_view::npos;  ///< to the end of what is at hand

    std::size_t at_ = 0;
    XmlToken token_;
    bool has_token_ = false;
    std::size_t token_at_ = 0;
    bool token_was_pending_ = false;
    bool close_pending_ = false;  ///< the empty element just opened is to be closed
    std::array<std::string_view, kMaxXmlDepth> open_elements_;
    std::size_t depth_ = 0;
    std::deque<std::string> kept_names_;  ///< of open elements whose text is forgotten
    std::string attribute_value_;
    std::deque<std::string> decoded_texts_;
    // What all that takes of the reply's memory.
    Pegasus::detail::MemoryCharge window_charge_;
    Pegasus::detail::MemoryCharge names_charge_;
    Pegasus::detail::MemoryCharge attribute_charge_;
    Pegasus::detail::MemoryCharge texts_charge_;
};

/// The text with its references resolved; nothing when one is malformed. References from 128 to 255
/// that spell UTF-8 bytes are taken as these bytes.
std::optional<std::string> ResolveReferences(std::string_view raw);

}  // namespace cimclient
