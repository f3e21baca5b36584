#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace editor {

// A stretch of a line that is coloured. A mnemonic is blue and bold, a comment dark red and italic; a mnemonic within a
// comment is dark red, italic and bold.
struct ColouredSpan {
    std::size_t Start;   // index into the line
    std::size_t Length;  // in characters
    bool Mnemonic;
    bool Comment;

    bool operator==(const ColouredSpan&) const = default;
};

// The spans of one line, in order and not overlapping; what lies between them is plain. Mnemonics are coloured wherever
// they stand as whole words, in either case. A comment runs from ";" to the end of the line.
std::vector<ColouredSpan> ApplyColorCode(std::u16string_view line);

}  // namespace editor
