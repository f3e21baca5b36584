#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

#include "machine/machine_state.h"

namespace m8085 {

// A byte of memory or of a port as it was.
struct FormerByte {
    std::uint16_t Address;  // or the number of the port
    std::uint8_t Value;
    bool IsPort;
};

// What leads back from a moment of a machine to an earlier one: the registers, and the bytes that differ, as they were.
struct Difference {
    Registers Before;
    std::vector<FormerByte> Bytes = {};
};

Difference DifferenceBetween(const MachineState& before, const MachineState& after);

// Gives the machine what it had before. Refused stays as it is.
void TakeBack(const Difference& difference, MachineState& machine);

// What differs between two moments of a machine. What was written with the value that it had does not differ. A new
// one says that nothing does.
struct Changes {
    Registers Before;
    Registers After;
    std::array<bool, MemorySize> Memory{};
    std::array<bool, PortCount> Ports{};

    // Whether a register, a flag, PC or SP differs.
    template <class T>
    bool Of(T Registers::*value) const {
        return Before.*value != After.*value;
    }

    // Whether any flag differs.
    bool OfFlags() const {
        return std::ranges::any_of(Flags, [this](const auto& flag) { return Of(flag.Member); });
    }
};

Changes ChangesIn(const Difference& difference, const Registers& after);
Changes Between(const MachineState& before, const MachineState& after);

}  // namespace m8085
