// Prints the user guide's tables of instructions, from what the assembler and the machine know of them.

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "assembler/disassembly.h"
#include "assembler/instruction_table.h"
#include "assembler/instruction_words.h"

namespace {

using assembler::InstructionWords;
using Codes = std::vector<std::uint8_t>;

// Each heading stands before the group that begins with its mnemonic.
struct Heading {
    std::string_view FirstMnemonic;
    std::string_view Text;
};

constexpr std::array headings = {
    Heading{"MOV", "Moving data"},     Heading{"ADD", "Arithmetic"},         Heading{"ANA", "Logic"},
    Heading{"JMP", "Jumps and calls"}, Heading{"IN", "Ports, and the rest"},
};

// The codes of all forms of an instruction, in ascending order.
Codes CodesOf(std::string_view mnemonic) {
    Codes codes;
    for (int code = 0; code < 256; ++code) {
        const int anchor = assembler::AnchorOf(static_cast<std::uint8_t>(code));
        if (anchor != assembler::NoAnchor && assembler::MnemonicAt(anchor) == mnemonic)
            codes.push_back(static_cast<std::uint8_t>(code));
    }
    return codes;
}

std::string_view Operand(std::uint8_t code, int column) {
    return assembler::OperandAt(assembler::AnchorOf(code), column);
}

std::string Hexadecimal(std::uint8_t code) {
    char digits[3];
    std::snprintf(digits, sizeof digits, "%02X", unsigned{code});
    return digits;
}

// What the guide calls the operands that may stand in a column.
std::string OperandName(std::uint8_t code, int column) {
    const std::string_view operand = Operand(code, column);
    if (operand.empty()) return {};
    if (column == 1 && assembler::TakesLabel(assembler::AnchorOf(code))) return "label";
    if (operand == "I8") return "byte";
    if (operand == "I16") return "word";
    return operand.size() == 1 ? "r" : "pair";
}

std::string Form(const InstructionWords& words, std::uint8_t code) {
    std::string form(words.Mnemonic);
    if (const std::string first = OperandName(code, 1); !first.empty()) form += " " + first;
    if (const std::string second = OperandName(code, 2); !second.empty()) form += "," + second;
    return "`" + form + "`";
}

std::string Flags(const Codes& codes) {
    std::string flags(assembler::FlagsChangedBy(codes.back()));
    if (flags.empty()) return "none";
    const bool isForAll = assembler::FlagsChangedBy(codes.front()) == flags;
    return isForAll ? flags : std::string(Operand(codes.back(), 1)) + ": " + flags;
}

bool UsesMemory(std::uint8_t code) {
    return Operand(code, 1) == "M" || Operand(code, 2) == "M";
}

std::string Time(const Codes& codes) {
    const auto time = assembler::TimeOf(codes.front());
    std::string text = std::to_string(time.Taken);
    if (time.NotTaken != time.Taken) text += " or " + std::to_string(time.NotTaken);
    const auto withMemory = std::ranges::find_if(codes, UsesMemory);
    if (withMemory != codes.end()) text += ", M " + std::to_string(assembler::TimeOf(*withMemory).Taken);
    return text;
}

std::string CodeList(const Codes& codes) {
    if (codes.size() == 1) return Hexadecimal(codes.front());
    if (OperandName(codes.front(), 2) == "r") return "[its own table](#the-codes-of-mov)";
    std::string list;
    for (const std::uint8_t code : codes)
        list += (list.empty() ? "`" : " `") + std::string(Operand(code, 1)) + " " + Hexadecimal(code) + "`";
    return list;
}

void PrintRow(const InstructionWords& words) {
    const Codes codes = CodesOf(words.Mnemonic);
    std::printf("| %s | %s | %s | %s | %d | %s |\n", Form(words, codes.front()).c_str(),
                std::string(words.Does).c_str(), CodeList(codes).c_str(), Flags(codes).c_str(),
                assembler::InstructionLength(codes.front()), Time(codes).c_str());
}

// One row for each register that takes, one column for each that gives.
void PrintCodesOfMov() {
    constexpr std::string_view registers = "BCDEHLMA";
    std::printf("\n### The codes of MOV\n\nThe row is the first register, the column the second.\n\n| |");
    for (const char name : registers) std::printf(" %c |", name);
    std::printf("\n|---|---|---|---|---|---|---|---|---|\n");
    const Codes codes = CodesOf("MOV");
    for (const char to : registers) {
        std::printf("| **%c** |", to);
        for (const char from : registers) {
            const auto code = std::ranges::find_if(
                codes, [=](std::uint8_t each) { return Operand(each, 1)[0] == to && Operand(each, 2)[0] == from; });
            std::printf(" %s |", code == codes.end() ? "" : Hexadecimal(*code).c_str());
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
