#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "machine/machine_state.h"

namespace console {

// An instruction as it stood in memory when it was executed.
struct Fetched {
    std::int32_t Address = 0;
    std::array<std::uint8_t, 3> Bytes{};
};

// The three bytes at PC; zeros where that is beyond the end of memory.
Fetched FetchAtPC(const m8085::MachineState& machine);

// Address, bytes, mnemonic with operands, and after it the registers, the flags that are 1, and the T-states so far:
// "8000  3E 05     MVI A,05     A=05 BC=0000 DE=0000 HL=0000 SP=FFF0 . . .. . ..  7".
void AppendTraceLine(std::string& text, const Fetched& instruction, const m8085::MachineState& after);

}  // namespace console
