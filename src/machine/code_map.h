#pragma once

#include <array>
#include <cstdint>

#include "machine/processor.h"

namespace m8085 {

// Ties the machine to the program text: for each address the source line, counted from 1, of the instruction whose
// opcode was assembled there; 0 where none ever was. Entries last until another instruction is assembled at the very
// same address.
class CodeMap {
public:
    // 0 for an address outside 0 to FFFF.
    int LineAt(std::int32_t address) const {
        return IsInMemory(address) ? lines[static_cast<std::uint32_t>(address)] : 0;
    }

    // Does nothing for an address outside 0 to FFFF.
    void SetLine(std::int32_t address, std::int16_t line) {
        if (IsInMemory(address)) lines[static_cast<std::uint32_t>(address)] = line;
    }

private:
    static bool IsInMemory(std::int32_t address) { return static_cast<std::uint32_t>(address) < MemorySize; }

    std::array<std::int16_t, MemorySize> lines{};
};

}  // namespace m8085
