#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "assembler/assembler.h"
#include "assembler/source_preparation.h"
#include "machine/code_map.h"
#include "machine/machine_state.h"

namespace assembler {

// What was assembled, in lines without line ends: for every line of the source its address, its bytes, its number and
// its text, and after them the labels with their addresses. The source, whose lines CR LF, LF and CR each end, is what
// `program` was prepared from and did assemble; memory and code map are as the assembly left them.
std::vector<std::u16string> ListingOf(std::u16string_view source, const PreparedProgram& program,
                                      const Assembly& assembly, const m8085::CodeMap& codeMap,
                                      const m8085::MemoryBytes& memory);

// The same of a source alone, from 8000 on; no line if it does not assemble.
std::vector<std::u16string> ListingOf(std::u16string_view source);

}  // namespace assembler
