#pragma once

#include <array>
#include <cstdint>

#include "machine/address_space.h"
#include "machine/bytes.h"

namespace m8085 {

// Ties the machine to the program text: for each address the source line, counted from 1, of the instruction whose
// opcode was assembled there; 0 where none ever was. Entries last until another instruction is assembled at the very
// same address.
class CodeMap {
public:
    // 0 for an address outside 0 to FFFF.
    int LineAt(std::int32_t address) const { return IsInMemory(address) ? lines_[Index(address)] : 0; }

    // Does nothing for an address outside 0 to FFFF.
    void SetLine(std::int32_t address, std::int16_t line) {
        if (!IsInMemory(address)) return;
        lines_[Index(address)] = line;
        runGoesOn_[Index(address)] = line != 0 && address <= LastFetchAddress;
    }

    // Whether a run continues at the address to which an instruction has led, 0 to 10000: a source line stands there,
    // and an instruction can be fetched.
    bool RunGoesOnAt(std::int32_t address) const { return runGoesOn_[Index(address)]; }

private:
    static constexpr bool IsInMemory(std::int32_t address) { return Index(address) < MemorySize; }

    std::array<std::int16_t, MemorySize> lines_{};

    // One load answers what a run asks between two instructions.
    std::array<bool, MemorySize + 1> runGoesOn_{};
};

}  // namespace m8085
