#pragma once

#include <string>
#include <vector>

#include "assembler/source_preparation.h"

namespace assembler {

// Something that assembles, but perhaps not as its writer meant it.
struct Warning {
    int Line = 0;          // of the source, counted from 1
    int PreparedLine = 0;  // the same of the prepared program
    std::u16string Text;   // a sentence without capital and full stop
};

// In the order of the lines. The program may have faults as well: lines that do not assemble get no warning.
std::vector<Warning> FindWarnings(const PreparedProgram& program);

}  // namespace assembler
