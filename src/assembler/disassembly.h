#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace assembler {

// In bytes, 1 to 3; 1 for a code that is not an instruction.
int InstructionLength(std::uint8_t opcode);

// The bytes of the instruction at an index, as far as there are so many: " 3E 05".
std::string InstructionBytes(std::span<const std::uint8_t> memory, std::int32_t at = 0);

// The instruction that the bytes begin with whole, as it is written in a program: "MVI A,05", "LXI H,9000", "PUSH PSW".
// Numbers have two or four digits, and the target of a jump or call is its address. Empty for a code that is not an
// instruction.
std::string Disassemble(std::span<const std::uint8_t> bytes);

}  // namespace assembler
