// What there is to say about one field of a record, once.
#pragma once

#include <string>

#include "schema/cell.h"

namespace schema {

/// Where a field's text comes from.
enum class Source {
    kProperty,         ///< a property of the class that is enumerated
    kIdentifyingInfo,  ///< an element of OtherIdentifyingInfo, found by its description
    kAssociated,       ///< a property of an object that is associated with the instance
    kNone,             ///< no query fills it
};

/// Makes the record's text of a property's.
using Decoder = std::string (*)(const std::string& text);

struct Field {
    /// In all outputs; empty when the field is in none.
    const char* name = "";
    const char* heading = "";  ///< for people
    Type type = Type::kText;
    const char* unit = "";     ///< empty without one
    bool identifies = false;   ///< finds the same thing in another reading, with the others that do
    bool varies = false;       ///< may differ in each reading, though nothing happened to the host
    const char* meaning = "";  ///< one sentence

    const char* property = "";  ///< of CIM
    Source source = Source::kProperty;
    const char* class_name = "";  ///< whose property it is; empty: the kind's class
    Decoder decode = nullptr;     ///< the text as it stands when null
    bool is_kept = true;          ///< otherwise asked for only so that the log reports it missing

    const char* log_label = nullptr;  ///< null: not in the log's dump of the record
    int log_position = 0;             ///< in that dump, from 1
};

}  // namespace schema
