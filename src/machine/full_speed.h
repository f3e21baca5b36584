#pragma once

#include <array>
#include <cstdint>

#include "machine/code_map.h"
#include "machine/machine_state.h"

namespace m8085 {

// Executes from 1 up to `instructions` instructions at full speed. Ends early where a run has something to decide:
// after HLT, at an address with no source line, before one at which it is to stop, on a code that is not an
// instruction, and on a refused instruction. Which of these it was can be read from the machine and the code map.
void ExecuteSlice(MachineState& machine, const CodeMap& codeMap, int instructions);

// How often the instruction at each address has been executed, and how many T-states that took in all.
struct Profile {
    struct Use {
        std::uint64_t Times = 0;
        std::uint64_t TStates = 0;
    };
    std::array<Use, MemorySize> ByAddress{};
};

// The same, somewhat slower, and adds each instruction to the profile.
void ExecuteSlice(MachineState& machine, const CodeMap& codeMap, Profile& profile, int instructions);

}  // namespace m8085
