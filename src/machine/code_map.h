#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>
#include <vector>

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
        NoteWhetherRunGoesOn(address);
    }

    // The addresses before whose instructions a run is to stop: these and no others. They lie in memory, in ascending
    // order.
    void SetStops(std::vector<std::int32_t> addresses) {
        const std::vector<std::int32_t> former = std::exchange(stops_, std::move(addresses));
        for (const std::int32_t address : former) NoteWhetherRunGoesOn(address);
        for (const std::int32_t address : stops_) NoteWhetherRunGoesOn(address);
    }
    bool StopsAt(std::int32_t address) const { return std::ranges::binary_search(stops_, address); }

    // Whether a run continues at the address to which an instruction has led, 0 to 10000: a source line stands there,
    // an instruction can be fetched, and the run is not to stop.
    bool RunGoesOnAt(std::int32_t address) const { return runGoesOn_[Index(address)]; }

private:
    static constexpr bool IsInMemory(std::int32_t address) { return Index(address) < MemorySize; }

    void NoteWhetherRunGoesOn(std::int32_t address) {
        runGoesOn_[Index(address)] = lines_[Index(address)] != 0 && address <= LastFetchAddress && !StopsAt(address);
    }

    std::array<std::int16_t, MemorySize> lines_{};
    std::vector<std::int32_t> stops_;

    // One load answers what a run asks between two instructions.
    std::array<bool, MemorySize + 1> runGoesOn_{};
};

}  // namespace m8085
