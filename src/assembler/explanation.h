#pragma once

#include <string>
#include <vector>

#include "assembler/assembler.h"
#include "assembler/source_preparation.h"

namespace assembler {

// The most likely cause of a failed assembly of this program, and how to correct it, for the person who wrote the line:
// a sentence without capital and full stop. Empty where there is nothing to add to the message.
std::u16string ExplainFailure(const PreparedProgram& program, const Assembly& failed);

// A line that does not assemble.
struct LineFault {
    int Line = 0;            // of the source, counted from 1
    std::u16string Message;  // as the assembler says it
    std::u16string Cause;    // and the cure, as ExplainFailure says them
};

// All lines at fault in their order, that at which the assembler stops among them. Where colons break a line into more
// than one, it is there once, and perhaps a second time for what stands after a colon in its comment. A jump or call is
// not at fault if a faulty line may be meant to define its label. Nothing for a program that is too long to assemble.
std::vector<LineFault> FindFaults(const PreparedProgram& program);

}  // namespace assembler
