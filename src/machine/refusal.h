#pragma once

#include <cstdint>

namespace m8085 {

// The limits of the machine that an instruction can run into. An instruction that would pass one is refused whole.
enum class Limit : std::uint8_t {
    None,
    Fetch,          // PC below 0 or above FFFD: the fetch covers three bytes
    WordAddress,    // LHLD or SHLD at FFFF: the second byte would lie at 10000
    Push,           // SP below 2 or above 10000: no room below it for two bytes
    Pop,            // SP below 0 or above FFFE: no two bytes at it
    ReturnAddress,  // a call at FFFD: its return address would be 10000
};

// What the machine refused to do, and where. Limit::None when nothing was refused.
struct Refusal {
    Limit Reason = Limit::None;
    std::int32_t PC = 0;       // address of the refused instruction
    std::uint8_t Opcode = 0;   // its opcode; 0 where it could not be fetched
    std::int32_t Operand = 0;  // the address or stack pointer that it could not use

    bool operator==(const Refusal&) const = default;
};

}  // namespace m8085
