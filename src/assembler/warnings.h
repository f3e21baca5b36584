#pragma once

#include <string>
#include <vector>

#include "assembler/source_preparation.h"

namespace assembler {

// Something that assembles, but perhaps not as its writer meant it.
struct Warning {
    int Line = 0;         // counted from 1
    std::u16string Text;  // a sentence without capital and full stop
};

// The lines that warnings are about and name: those of the source, or of the program after it has been prepared.
enum class Numbering { OfSource, OfPrepared };

// In the order of the lines. The program may have faults as well: lines that do not assemble get no warning.
std::vector<Warning> FindWarnings(const PreparedProgram& program, Numbering numbering = Numbering::OfSource);

}  // namespace assembler
