// Prints the user guide's tables of instructions, from what the assembler and the machine know of them.

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "assembler/disassembly.h"
#include "assembler/instruction_table.h"
#include "assembler/instruction_words.h"

namespace {

using assembler::InstructionRow;
using assembler::InstructionWords;
using Rows = std::vector<InstructionRow>;

// Each heading stands before the group that begins with its mnemonic.
struct Heading {
    std::string_view FirstMnemonic;
    std::string_view Text;
};

constexpr std::array headings = {
    Heading{"MOV", "Moving data"},     Heading{"ADD", "Arithmetic"},         Heading{"ANA", "Logic"},
    Heading{"JMP", "Jumps and calls"}, Heading{"IN", "Ports, and the rest"},
};

// The rows of all forms of an instruction, with their codes in ascending order.
Rows RowsOf(std::string_view mnemonic) {
    Rows rows;
    std::ranges::copy_if(assembler::InstructionRows(), std::back_inserter(rows),
                         [=](const InstructionRow& row) { return row.Mnemonic == mnemonic; });
    std::ranges::sort(rows, {}, &InstructionRow::Opcode);
    return rows;
}

std::string Hexadecimal(std::uint8_t code) {
    char digits[3];
    std::snprintf(digits, sizeof digits, "%02X", unsigned{code});
    return digits;
}

// What the guide calls the operands that may stand in a column.
std::string OperandName(const InstructionRow& row, std::size_t column) {
    const std::string_view operand = row.Operands[column];
    if (operand.empty()) return {};
    if (column == 0 && row.TakesLabel()) return "label";
    if (operand == "I8") return "byte";
    if (operand == "I16") return "word";
    return operand.size() == 1 ? "r" : "pair";
}

std::string Form(const InstructionRow& row) {
    std::string form(row.Mnemonic);
    if (const std::string first = OperandName(row, 0); !first.empty()) form += " " + first;
    if (const std::string second = OperandName(row, 1); !second.empty()) form += "," + second;
    return "`" + form + "`";
}

std::string Flags(const Rows& rows) {
    std::string flags(assembler::FlagsChangedBy(rows.back().Opcode));
    if (flags.empty()) return "none";
    const bool isForAll = assembler::FlagsChangedBy(rows.front().Opcode) == flags;
    return isForAll ? flags : std::string(rows.back().Operands[0]) + ": " + flags;
}

std::string Time(const Rows& rows) {
    const auto time = assembler::TimeOf(rows.front().Opcode);
    std::string text = std::to_string(time.Taken);
    if (time.NotTaken != time.Taken) text += " or " + std::to_string(time.NotTaken);
    const auto withMemory = std::ranges::find_if(
        rows, [](const InstructionRow& row) { return row.Operands[0] == "M" || row.Operands[1] == "M"; });
    if (withMemory != rows.end()) text += ", M " + std::to_string(assembler::TimeOf(withMemory->Opcode).Taken);
    return text;
}

std::string CodeList(const Rows& rows) {
    if (rows.size() == 1) return Hexadecimal(rows.front().Opcode);
    if (OperandName(rows.front(), 1) == "r") return "[its own table](#the-codes-of-mov)";
    std::string list;
    for (const InstructionRow& row : rows)
        list += (list.empty() ? "`" : " `") + std::string(row.Operands[0]) + " " + Hexadecimal(row.Opcode) + "`";
    return list;
}

void PrintRow(const InstructionWords& words) {
    const Rows rows = RowsOf(words.Mnemonic);
    std::printf("| %s | %s | %s | %s | %d | %s |\n", Form(rows.front()).c_str(), std::string(words.Does).c_str(),
                CodeList(rows).c_str(), Flags(rows).c_str(), assembler::InstructionLength(rows.front().Opcode),
                Time(rows).c_str());
}

// One row for each register that takes, one column for each that gives.
void PrintCodesOfMov() {
    constexpr std::string_view registers = "BCDEHLMA";
    std::printf("\n### The codes of MOV\n\nThe row is the first register, the column the second.\n\n| |");
    for (const char name : registers) std::printf(" %c |", name);
    std::printf("\n|---|---|---|---|---|---|---|---|---|\n");
    const Rows rows = RowsOf("MOV");
    for (const char to : registers) {
        std::printf("| **%c** |", to);
        for (const char from : registers) {
            const auto row = std::ranges::find_if(rows, [=](const InstructionRow& each) {
                return each.Operands[0][0] == to && each.Operands[1][0] == from;
            });
            std::printf(" %s |", row == rows.end() ? "" : Hexadecimal(row->Opcode).c_str());
        }
        std::printf("\n");
    }
}

}  // namespace

int main() {
    for (const InstructionWords& words : assembler::AllInstructionWords()) {
        const auto heading = std::ranges::find(headings, words.Mnemonic, &Heading::FirstMnemonic);
        if (heading != headings.end()) {
            std::printf("\n### %s\n\n", std::string(heading->Text).c_str());
            std::puts("| Instruction | What it does | Code | Flags | Bytes | T-states |\n|---|---|---|---|---|---|");
        }
        PrintRow(words);
    }
    PrintCodesOfMov();
    std::printf("\n");
}
