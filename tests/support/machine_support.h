#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <string>

#include "machine/machine_state.h"
#include "machine/number_format.h"

namespace support {

constexpr std::uint8_t Byte(int value) {
    return static_cast<std::uint8_t>(value & 0xFF);
}

// A machine with `program` at 8000, PC there and SP at FFF0.
inline m8085::MachineState MachineWith(std::initializer_list<std::uint8_t> program) {
    m8085::MachineState machine;
    machine.PC = 0x8000;
    machine.SP = 0xFFF0;
    std::copy(program.begin(), program.end(), machine.Memory.begin() + machine.PC);
    return machine;
}

inline void Execute(m8085::MachineState& machine, int instructions) {
    while (instructions-- > 0) machine.ExecuteInstruction();
}

inline constexpr int AllRegisterCodes[] = {0, 1, 2, 3, 4, 5, 6, 7};

// A different value in every register, with 9C9F in HL, and in the byte there.
inline void SetDistinctValues(m8085::MachineState& machine) {
    machine.H = 0x9C;
    machine.L = 0x9F;
    for (const int code : AllRegisterCodes) machine.SetReg(Byte(code), Byte(0x90 + 3 * code));
    machine.TStates = 0;
}

inline void SetAllFlags(m8085::MachineState& machine, bool value) {
    machine.S = machine.Z = machine.AC = machine.P = machine.CY = value;
}

// Everything but Refused.
inline ::testing::AssertionResult SameState(const m8085::MachineState& left, const m8085::MachineState& right) {
    const auto text = [](const m8085::MachineState& machine) {
        std::string line;
        for (const int value : {machine.A, machine.B, machine.C, machine.D, machine.E, machine.H, machine.L})
            line += m8085::FormatHexByte(Byte(value)) + ' ';
        for (const int value : {std::int32_t{machine.GetFlagByte()}, machine.SP, machine.PC, machine.TStates})
            line += m8085::FormatHexLong(value) + ' ';
        return line + (machine.Halted ? "halted" : "");
    };
    if (text(left) != text(right)) return ::testing::AssertionFailure() << text(left) << "\n" << text(right);
    if (left.Memory != right.Memory) return ::testing::AssertionFailure() << "Memory differs";
    if (left.Ports != right.Ports) return ::testing::AssertionFailure() << "Ports differ";
    return ::testing::AssertionSuccess();
}

}  // namespace support
