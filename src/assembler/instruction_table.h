#pragma once

#include <cstdint>
#include <string_view>

namespace assembler {

// Every instruction form that a program may contain, one row of text for each opcode that the machine has: 234 rows of
// 21 characters. A row reads "7C MOV  A   H   1  " and ends with CR LF: the opcode, the mnemonic, two operand columns
// and the number of its group. An operand column holds a register, a register pair, "I8" or "I16" for a number of that
// many bits, or blanks. The rows begin with opcode 7C, run up to FE and go on from 00 to 7B.
extern const std::string_view InstructionTable;

inline constexpr int InstructionRows = 234;
inline constexpr int InstructionRowLength = 21;
inline constexpr int MnemonicWidth = 4;
inline constexpr int OperandColumnWidth = 3;
inline constexpr int LongestSearchableWord = 5;

// A place in the table is named by its anchor: the position, counted from 1, of the blank before a row's mnemonic.
// 0 is the anchor of nothing.
inline constexpr int NoAnchor = 0;
inline constexpr int FirstAnchor = 3;

// Each search returns the anchor of the first row that fits, or NoAnchor, and takes upper case. Words of more than
// five characters fit no row. Operands need only be the beginning of what their column holds, so that "B" finds BC.
int FindInstruction(std::u16string_view mnemonic);
int FindInstruction(std::u16string_view mnemonic, std::u16string_view firstOperand);
// Of the first operand only its first character counts, and it must be a one-letter register.
int FindInstruction(std::u16string_view mnemonic, std::u16string_view firstOperand, std::u16string_view secondOperand);

// What stands in a row. The anchor must be one of the table's.
std::uint8_t OpcodeAt(int anchor);
std::string_view MnemonicAt(int anchor);  // without padding
// column is 1 or 2; without padding, so empty where the instruction has no such operand
std::string_view OperandAt(int anchor, int column);
// Whether the first operand is a label: that of all jumps and calls is, and of nothing else.
bool TakesLabel(int anchor);

}  // namespace assembler
