#include "assembler/instruction_table.h"

#include <algorithm>
#include <array>
#include <cassert>

#include "machine/number_format.h"

namespace assembler {

namespace {

struct InstructionForm {
    std::string_view Mnemonic;  // empty for a code that is no instruction
    std::string_view FirstOperand;
    std::string_view SecondOperand;
    char Group = '0';
};

struct SingleForm {
    std::uint8_t Opcode;
    InstructionForm Form;
};

constexpr std::array<std::string_view, 8> registerNames = {"B", "C", "D", "E", "H", "L", "M", "A"};
constexpr std::array<std::string_view, 4> pairNames = {"BC", "DE", "HL", "SP"};
constexpr std::array<std::string_view, 4> stackPairNames = {"BC", "DE", "HL", "PSW"};
constexpr std::array<std::string_view, 8> accumulatorMnemonics = {"ADD", "ADC", "SUB", "SBB",
                                                                  "ANA", "XRA", "ORA", "CMP"};
constexpr std::array<std::string_view, 8> jumpMnemonics = {"JNZ", "JZ", "JNC", "JC", "JPO", "JPE", "JP", "JM"};
constexpr std::array<std::string_view, 8> callMnemonics = {"CNZ", "CZ", "CNC", "CC", "CPO", "CPE", "CP", "CM"};
constexpr std::array<std::string_view, 8> returnMnemonics = {"RNZ", "RZ", "RNC", "RC", "RPO", "RPE", "RP", "RM"};

// The instructions that belong to no family.
constexpr std::array singleForms = {
    SingleForm{0x02, {"STAX", "BC", "", '1'}},  SingleForm{0x12, {"STAX", "DE", "", '1'}},
    SingleForm{0x0A, {"LDAX", "BC", "", '1'}},  SingleForm{0x1A, {"LDAX", "DE", "", '1'}},
    SingleForm{0x22, {"SHLD", "I16", "", '1'}}, SingleForm{0x2A, {"LHLD", "I16", "", '1'}},
    SingleForm{0x32, {"STA", "I16", "", '1'}},  SingleForm{0x3A, {"LDA", "I16", "", '1'}},
    SingleForm{0xE3, {"XTHL", "", "", '1'}},    SingleForm{0xE9, {"PCHL", "", "", '1'}},
    SingleForm{0xEB, {"XCHG", "", "", '1'}},    SingleForm{0xF9, {"SPHL", "", "", '1'}},
    SingleForm{0xC6, {"ADI", "I8", "", '2'}},   SingleForm{0xCE, {"ACI", "I8", "", '2'}},
    SingleForm{0xD6, {"SUI", "I8", "", '2'}},   SingleForm{0xDE, {"SBI", "I8", "", '2'}},
    SingleForm{0x07, {"RLC", "", "", '2'}},     SingleForm{0x0F, {"RRC", "", "", '2'}},
    SingleForm{0x17, {"RAL", "", "", '2'}},     SingleForm{0x1F, {"RAR", "", "", '2'}},
    SingleForm{0x27, {"DAA", "", "", '2'}},     SingleForm{0xE6, {"ANI", "I8", "", '3'}},
    SingleForm{0xEE, {"XRI", "I8", "", '3'}},   SingleForm{0xF6, {"ORI", "I8", "", '3'}},
    SingleForm{0x2F, {"CMA", "", "", '3'}},     SingleForm{0x37, {"STC", "", "", '3'}},
    SingleForm{0x3F, {"CMC", "", "", '3'}},     SingleForm{0xC3, {"JMP", "I16", "", '4'}},
    SingleForm{0xCD, {"CALL", "I16", "", '4'}}, SingleForm{0xC9, {"RET", "", "", '4'}},
    SingleForm{0xFE, {"CPI", "I8", "", '4'}},   SingleForm{0x00, {"NOP", "", "", '5'}},
    SingleForm{0x76, {"HLT", "", "", '5'}},     SingleForm{0xDB, {"IN", "I8", "", '5'}},
    SingleForm{0xD3, {"OUT", "I8", "", '5'}},
};

// The families of codes 00 to 3F, told apart by their low bits.
constexpr InstructionForm LowForm(unsigned opcode) {
    const std::string_view destination = registerNames[opcode >> 3 & 7];
    const std::string_view pair = pairNames[opcode >> 4 & 3];
    switch (opcode & 0x0F) {
        case 0x1: return {"LXI", pair, "I16", '1'};
        case 0x3: return {"INX", pair, "", '2'};
        case 0x9: return {"DAD", pair, "", '2'};
        case 0xB: return {"DCX", pair, "", '2'};
        default: break;
    }
    switch (opcode & 7) {
        case 4: return {"INR", destination, "", '2'};
        case 5: return {"DCR", destination, "", '2'};
        case 6: return {"MVI", destination, "I8", '1'};
        default: return {};
    }
}

// The families of codes C0 to FF.
constexpr InstructionForm HighForm(unsigned opcode) {
    const unsigned condition = opcode >> 3 & 7;
    const std::string_view pair = stackPairNames[opcode >> 4 & 3];
    switch (opcode & 7) {
        case 0: return {returnMnemonics[condition], "", "", '4'};
        case 2: return {jumpMnemonics[condition], "I16", "", '4'};
        case 4: return {callMnemonics[condition], "I16", "", '4'};
        default: break;
    }
    switch (opcode & 0x0F) {
        case 0x1: return {"POP", pair, "", '1'};
        case 0x5: return {"PUSH", pair, "", '1'};
        default: return {};
    }
}

constexpr InstructionForm FormOf(unsigned opcode) {
    for (const SingleForm& single : singleForms)
        if (single.Opcode == opcode) return single.Form;

    const std::string_view source = registerNames[opcode & 7];
    switch (opcode >> 6) {
        case 0: return LowForm(opcode);
        case 1: return {"MOV", registerNames[opcode >> 3 & 7], source, '1'};
        case 2: return {accumulatorMnemonics[opcode >> 3 & 7], source, "", opcode < 0xA0 ? '2' : '3'};
        default: return HighForm(opcode);
    }
}

using TableText = std::array<char, std::size_t{InstructionRows} * InstructionRowLength>;

constexpr TableText BuildInstructionTable() {
    constexpr unsigned firstOpcode = 0x7C;
    TableText text{};
    std::size_t length = 0;
    const auto append = [&](std::string_view field, std::size_t width) {
        for (std::size_t i = 0; i < width; ++i) text[length++] = i < field.size() ? field[i] : ' ';
    };
    for (unsigned i = 0; i < 256; ++i) {
        const unsigned opcode = (firstOpcode + i) & 0xFF;
        const InstructionForm form = FormOf(opcode);
        if (form.Mnemonic.empty()) continue;
        append(m8085::HexDigits.substr(opcode >> 4, 1), 1);
        append(m8085::HexDigits.substr(opcode & 15, 1), 2);
        append(form.Mnemonic, 5);
        append(form.FirstOperand, 4);
        append(form.SecondOperand, 4);
        append({&form.Group, 1}, 3);
        append("\r\n", 2);
    }
    return text;
}

constexpr TableText tableText = BuildInstructionTable();

constexpr std::string_view RowText(int anchor, int distance, int width) {
    const std::string_view field(tableText.data() + anchor - 1 + distance, static_cast<std::size_t>(width));
    return field.substr(0, field.find_last_not_of(' ') + 1);
}

bool BeginsWith(int position, std::string_view text, std::u16string_view beginning) {
    if (beginning.size() > text.size() - static_cast<std::size_t>(position)) return false;
    return std::equal(beginning.begin(), beginning.end(), text.begin() + position,
                      [](char16_t wanted, char found) { return wanted == static_cast<char16_t>(found); });
}

// The first row in which the mnemonic column holds just the mnemonic and what follows it begins with `operands`.
int FindRow(std::u16string_view mnemonic, std::u16string_view operands) {
    if (mnemonic.size() > MnemonicWidth) return NoAnchor;
    constexpr int operandDistance = 6;
    for (int row = 0; row < InstructionRows; ++row) {
        const int anchor = FirstAnchor + row * InstructionRowLength;
        // positions in the table count from 1, indices from 0: the anchor is the index of the mnemonic
        if (BeginsWith(anchor, InstructionTable, mnemonic) && MnemonicAt(anchor).size() == mnemonic.size() &&
            BeginsWith(anchor - 1 + operandDistance, InstructionTable, operands))
            return anchor;
    }
    return NoAnchor;
}

}  // namespace

const std::string_view InstructionTable(tableText.data(), tableText.size());

int FindInstruction(std::u16string_view mnemonic) {
    return FindRow(mnemonic, {});
}

int FindInstruction(std::u16string_view mnemonic, std::u16string_view firstOperand) {
    return FindRow(mnemonic, firstOperand);
}

int FindInstruction(std::u16string_view mnemonic, std::u16string_view firstOperand, std::u16string_view secondOperand) {
    std::u16string operands(firstOperand.substr(0, 1));
    operands += u"   ";
    operands += secondOperand;
    return FindRow(mnemonic, operands);
}

std::uint8_t OpcodeAt(int anchor) {
    const std::string_view digits = RowText(anchor, -2, 2);
    return static_cast<std::uint8_t>(m8085::HexDigitValue(static_cast<unsigned char>(digits[0])) << 4 |
                                     m8085::HexDigitValue(static_cast<unsigned char>(digits[1])));
}

std::string_view MnemonicAt(int anchor) {
    return RowText(anchor, 1, MnemonicWidth);
}

std::string_view OperandAt(int anchor, int column) {
    assert(column == 1 || column == 2);
    return RowText(anchor, 6 + 4 * (column - 1), OperandColumnWidth);
}

bool TakesLabel(int anchor) {
    const char initial = MnemonicAt(anchor).front();
    return OperandAt(anchor, 1) == "I16" && (initial == 'J' || initial == 'C');
}

}  // namespace assembler
