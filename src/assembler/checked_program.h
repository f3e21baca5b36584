#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "assembler/source_preparation.h"

namespace assembler {

// A line of a prepared program, and what is wrong with it.
struct CheckedLine {
    int SourceLine = 0;                 // counted from 1
    std::vector<std::u16string> Words;  // as WordsOfLine gives them
    bool IsInComment = false;           // a colon in a comment has broken it off
    std::u16string Error;               // as the assembler says it; empty where the line assembles
};

struct CheckedProgram {
    std::vector<CheckedLine> Lines;
    std::vector<std::u16string> Labels;              // in the order of the source, each once
    std::set<std::u16string> Targets;                // of jumps and calls
    std::optional<std::u16string> UnreachableLabel;  // the one in the last place of a full label table
};

// Assembles each line by itself, so that no fault hides another, and looks for the labels afterwards. A jump or call is
// not at fault if a faulty line may be meant to define its label. Of the lines that find the label table full only the
// first is at fault. No line is of a program that is longer than the assembler takes.
CheckedProgram CheckProgram(const PreparedProgram& program);

}  // namespace assembler
