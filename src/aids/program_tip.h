#pragma once

#include <string>
#include <string_view>

#include "assembler/assembler.h"
#include "machine/code_map.h"
#include "machine/machine_state.h"

namespace aids {

// A place in the program text.
struct TextPlace {
    std::u16string_view Line;  // its text
    int Number = 0;            // of the line, counted from 1
    std::size_t Column = 0;    // counted from 0; at or beyond the end of the line for what is right of it
};

// What a tooltip in the editor says about what stands at a place: what a mnemonic does, a number in other bases, what a
// register holds now. While the text is what was assembled, and only then there is an `assembled`, also where a label
// stands, and elsewhere the address and the bytes of the line's instruction. Empty where there is nothing to say.
std::u16string ProgramTip(const TextPlace& place, const m8085::MachineState& machine, const m8085::CodeMap& codeMap,
                          const assembler::Assembly* assembled);

}  // namespace aids
