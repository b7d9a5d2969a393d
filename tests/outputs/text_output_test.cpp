// A document as text.
#include "outputs/text/text_output.h"

#include <gmock/gmock.h>

#include <sstream>

#include "schema/host_kinds.h"
#include "support/documents.h"

namespace {

using inventory::Document;
using support::DocumentOf;
using support::Section;
using testing::HasSubstr;

std::string Text(const Document& document) {
    std::ostringstream out;
    outputs::WriteText(document, {}, out);
    return out.str();
}

TEST(TextOutput, KeepsAValueOnItsLine) {
    EXPECT_THAT(Text(DocumentOf(Section(schema::kOs, {{{"name", "a\nForged\x1B[2J"}}}))),
                HasSubstr("a\\nForged\\x1B[2J\n"));
}

}  // namespace
