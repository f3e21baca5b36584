#pragma once

#include <algorithm>
#include <cstdint>
#include <initializer_list>

#include "machine/machine_state.h"

namespace support {

constexpr std::uint8_t Byte(int value) {
    return static_cast<std::uint8_t>(value & 0xFF);
}

// A machine with `program` at 8000, PC there and SP at FFF0, and with a different value in every register: 9093 in BC,
// 9699 in DE, 9C9F in HL, A5 in A, and A2 in the byte at HL.
inline m8085::MachineState MachineWith(std::initializer_list<int> program) {
    m8085::MachineState machine;
    machine.H = 0x9C;
    machine.L = 0x9F;
    for (std::uint8_t code = 0; code < 8; ++code) machine.SetReg(code, Byte(0x90 + 3 * code));
    SetToProgramStart(machine);
    std::transform(program.begin(), program.end(), machine.Memory.begin() + machine.PC, Byte);
    return machine;
}

inline void Execute(m8085::MachineState& machine, int instructions) {
    while (instructions-- > 0) machine.ExecuteInstruction();
}

inline void SetAllFlags(m8085::MachineState& machine, bool value) {
    machine.S = machine.Z = machine.AC = machine.P = machine.CY = value;
}

}  // namespace support
