#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace assembler {

// The places at which a line end is missing behind a label: behind each colon and the spaces that follow it, unless a
// line end stands there already. Indices into the text, in ascending order, at which CR LF is to be inserted; they
// take no account of each other. Every colon counts, in a comment too. The text's lines end in CR LF.
std::vector<std::size_t> FindLabelSplits(std::u16string_view text);

// What to tell the user of a program text of so many characters, line ends as two, if it is more than the assembler
// takes once a line end is inserted in so many places.
std::optional<std::string> ExplainExcessLength(std::size_t length, std::size_t labelSplits);

// The text that the assembler takes: each CR LF becomes a line feed and a blank, and a line feed ends the last line.
std::u16string ConvertLineEnds(std::u16string_view text);

}  // namespace assembler
