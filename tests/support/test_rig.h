#pragma once

#include <string>
#include <string_view>

#include "assembler/assembler.h"
#include "assembler/source_preparation.h"
#include "execution/run_control.h"
#include "machine/code_map.h"
#include "machine/machine_state.h"

namespace support {

// For messages; what is not ASCII becomes a question mark.
inline std::string Narrow(std::u16string_view text) {
    std::string narrow;
    for (const char16_t character : text) narrow += character < 0x80 ? static_cast<char>(character) : '?';
    return narrow;
}

// A machine and a code map, as the whole program has them.
struct TestRig {
    m8085::MachineState machine;
    m8085::CodeMap codeMap;

    // Assembles text as an editor holds it, with CR LF, and on success sets the machine to the program's start.
    assembler::Assembly Assemble(std::u16string_view source) {
        assembler::Assembly assembly =
            assembler::AssembleProgram(assembler::PrepareProgram(source).Text, machine, codeMap);
        if (assembly.Succeeded) m8085::SetToProgramStart(machine);
        return assembly;
    }
};

}  // namespace support
