#pragma once

#include "machine/processor.h"

namespace m8085 {

// The one record of the simulated chip: registers, flags, 64 KB of memory, 256 ports. All of it starts at zero.
// A port is a latch that IN and OUT share.
struct MachineState : Processor<Storage::Own> {
    MachineState() : Processor{Registers{}, {}, {}, {}} {}

    // Executes the one instruction at PC. A code that is no instruction changes nothing. An instruction that would
    // reach past memory is refused: Refused says why, and nothing else has changed.
    void ExecuteInstruction();
};

}  // namespace m8085
