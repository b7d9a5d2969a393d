// The scheme of the worker's list queries: one CIM class, its wanted properties, and the record
// fields that they fill, as data.
#pragma once

#include <span>
#include <string>
#include <utility>

namespace Zentar::Agentless {

/// One wanted property, and how its text gets into the record. Without a `store` the property is
/// asked for, so that the log tells when it is missing, but goes nowhere.
template <class Record>
struct Column {
    const char* property;
    void (*store)(Record& record, std::string&& text) = nullptr;
};

template <class Record>
struct TableQuery {
    const char* class_name;
    const char* trace;    ///< written on entry
    const char* failure;  ///< written when the class could not be enumerated
    std::span<const Column<Record>> columns;
};

/// Stores the text as it stands.
template <auto Field, class Record>
void Verbatim(Record& record, std::string&& text) {
    record.*Field = std::move(text);
}

/// Stores the word that the decoder gives for the text.
template <auto Field, auto Decoder, class Record>
void Decoded(Record& record, std::string&& text) {
    record.*Field = Decoder(text);
}

}  // namespace Zentar::Agentless
