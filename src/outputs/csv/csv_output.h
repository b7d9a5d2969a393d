// Documents as CSV (RFC 4180): one table for each kind of record and one for failures, with the
// rows of as many documents as are wanted. Lines end with CR LF.
#pragma once

#include <iosfwd>
#include <string>

#include "inventory/document.h"

namespace outputs {

/// The first line: "host" and the public names.
std::string CsvHeader(const schema::RecordKind& kind);

/// A line for each of the document's records of the kind. None of a kind that was not chosen, and
/// none of a single record that could not be read.
void AppendCsv(const inventory::Document& document, const schema::RecordKind& kind,
               std::ostream& out);

std::string CsvFailuresHeader();

/// A line for each failure.
void AppendCsvFailures(const inventory::Document& document, std::ostream& out);

}  // namespace outputs
