#pragma once

#include <algorithm>
#include <array>

#include "machine/machine_state.h"

namespace m8085 {

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

// Allocates nothing.
Changes Between(const MachineState& before, const MachineState& after);

}  // namespace m8085
