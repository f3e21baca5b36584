#pragma once

#include <string>

#include "assembler/assembler.h"
#include "assembler/source_preparation.h"

namespace assembler {

// The most likely cause of a failed assembly of this program, and how to correct it, for the person who wrote the line:
// a sentence without capital and full stop. Empty where there is nothing to add to the message.
std::u16string ExplainFailure(const PreparedProgram& program, const Assembly& failed);

}  // namespace assembler
