#pragma once

#include <cstdint>
#include <vector>

#include "machine/code_map.h"

namespace execution {

// The addresses, in ascending order, before which a run stops for these lines of the assembled text, counted from 1. A
// line without an instruction stands for the next line that has one; after the last one there is none. `instructions`
// are the addresses of the program, in ascending order like their lines in the code map: what longer programs have left
// there does not count.
std::vector<std::int32_t> StopAddresses(const std::vector<int>& lines, const std::vector<std::int32_t>& instructions,
                                        const m8085::CodeMap& codeMap);

}  // namespace execution
