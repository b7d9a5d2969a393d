// Records as tables and cards.
#pragma once

#include "outputs/text/text_writer.h"
#include "schema/records.h"

namespace outputs {

/// One record, a line for each field; more where a value needs them. What the host did not say is
/// a dash.
void WriteCard(const schema::Records& records, TextWriter& text);

/// Records as a table that fits the terminal, without the columns of which no record has a value.
/// Texts that do not fit into their cells go on below, the first column's and all that are very
/// long end with an ellipsis. Where the terminal is too narrow for a table, each record is a card.
void WriteTable(const schema::Records& records, TextWriter& text);

}  // namespace outputs
