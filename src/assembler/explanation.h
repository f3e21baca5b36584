#pragma once

#include <string>

#include "assembler/assembler.h"
#include "assembler/source_preparation.h"

namespace assembler {

// What most likely is behind a failed assembly of this program, and how to mend it, for whoever wrote the line: a
// sentence without capital and full stop. Empty where there is nothing to add to the message.
std::u16string ExplainFailure(const PreparedProgram& program, const Assembly& failed);

}  // namespace assembler
