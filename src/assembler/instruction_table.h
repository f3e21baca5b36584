#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace assembler {

// Every instruction form that a program may contain, one row of text for each opcode that the machine has: 234 rows of
// 21 characters. A row reads "7C MOV  A   H   1  " and ends with CR LF: the opcode, the mnemonic, two operand columns
// and the number of its group. An operand column holds a register, a register pair, "I8" or "I16" for a number of that
// many bits, or blanks. The rows begin with opcode 7C, run up to FE and continue from 00 to 7B.
extern const std::string_view InstructionTable;

// The registers and pairs that operand columns hold, in the order in which they are shown.
inline constexpr std::array<std::string_view, 13> RegisterNames = {"A", "B",  "C",  "D",  "E",  "H",  "L",
                                                                   "M", "BC", "DE", "HL", "SP", "PSW"};
bool IsRegister(std::u16string_view word);

// One of them as programs write it: a pair goes by its first register, but for those that have none.
std::string_view RegisterText(std::string_view name);

// What a row says. Its texts are without padding.
struct InstructionRow {
    std::uint8_t Opcode = 0;
    std::string_view Mnemonic;
    std::array<std::string_view, 2> Operands;  // empty where the instruction has no such operand

    // Whether the first operand is a label: that of all jumps and calls is, and of nothing else.
    constexpr bool TakesLabel() const { return Operands[0] == "I16" && (Mnemonic[0] == 'J' || Mnemonic[0] == 'C'); }
};

// In the order of the table.
std::span<const InstructionRow> InstructionRows();

// nullptr for a code that is not an instruction.
const InstructionRow* FindInstruction(std::uint8_t opcode);

// The first row of the mnemonic whose operand columns begin with the operands, so that "B" finds BC and nothing finds
// any of them; nullptr if there is none. Takes upper case.
const InstructionRow* FindInstruction(std::u16string_view mnemonic, std::u16string_view firstOperand = {},
                                      std::u16string_view secondOperand = {});

inline bool IsMnemonic(std::u16string_view word) {
    return FindInstruction(word) != nullptr;
}

}  // namespace assembler
