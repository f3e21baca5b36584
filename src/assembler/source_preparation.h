#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace assembler {

// The places at which a line end is missing after a label: after each colon and the spaces that follow it, unless a
// line end stands there already. Indices into the text, in ascending order, at which CR LF is to be inserted; they
// take no account of each other. Every colon counts, in a comment too. The text's lines end in CR LF.
std::vector<std::size_t> FindLabelSplits(std::u16string_view text);

// What to say to the user about a program text of so many characters, line ends as two, if it is more than the
// assembler takes once a line end is inserted in so many places.
std::optional<std::string> ExplainExcessLength(std::size_t length, std::size_t labelSplits);

// The text that the assembler takes: each CR LF becomes a line feed and a blank, and a line feed ends the last line.
std::u16string ConvertLineEnds(std::u16string_view text);

// A program as the assembler takes it, and where each of its lines comes from.
struct PreparedProgram {
    std::u16string Text;
    std::vector<int> SourceLines;  // of each line of Text, the first being at 0, the line of the source
    std::size_t Length = 0;        // of the source in characters, line ends as two
    std::size_t LabelSplits = 0;   // line ends that were inserted after labels

    // Both count lines from 1. 0 for a line that the text does not have.
    int SourceLine(int line) const;
};

// Prepares a program as it stands in a file, where CR LF, LF and CR each end a line. What stands after a label goes to
// a line of its own, but keeps the number of its line in the file.
PreparedProgram PrepareProgram(std::u16string_view source);

}  // namespace assembler
