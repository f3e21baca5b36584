#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "assembler/source_preparation.h"

namespace assembler {

// What begins a comment, and perhaps was only meant to: ";", "//", "/*", or a quotation mark that begins the line.
// Empty where there is none.
std::u16string_view FindCommentMark(std::u16string_view line);

// A line of a prepared program, and what is wrong with it.
struct CheckedLine {
    int SourceLine = 0;                 // counted from 1
    std::vector<std::u16string> Words;  // as WordsOfLine gives them
    std::u16string_view Comment;        // what begins the comment that it is broken off from by a colon, or that
                                        // "/*" begins lines above; empty for none
    std::u16string Error;               // as the assembler says it; empty where the line assembles
};

struct CheckedProgram {
    std::vector<CheckedLine> Lines;
    std::vector<std::u16string> Labels;              // in the order of the source, each once
    std::set<std::u16string> Targets;                // of jumps and calls
    std::set<std::u16string> MisplacedLabels;        // that do not come first on their lines, and so are none
    std::optional<std::u16string> UnreachableLabel;  // the one in the last place of a full label table
};

// Assembles each line by itself, so that no fault hides another, and looks for the labels afterwards. A jump or call is
// not at fault if a faulty line may be meant to define its label. Of the lines that find the label table full only the
// first is at fault. No line is of a program that is longer than the assembler takes.
CheckedProgram CheckProgram(const PreparedProgram& program);

}  // namespace assembler
