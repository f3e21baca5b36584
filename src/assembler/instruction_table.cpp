#include "assembler/instruction_table.h"

#include <algorithm>
#include <array>

#include "assembler/mnemonic_list.h"
#include "machine/number_format.h"
#include "machine/registers.h"

namespace assembler {

namespace {

struct InstructionForm {
    std::string_view Mnemonic = {};  // empty for a code that is not an instruction
    char Group = '0';
    std::string_view FirstOperand = {};
    std::string_view SecondOperand = {};
};

struct SingleForm {
    std::uint8_t Opcode;
    InstructionForm Form;
};

constexpr std::array<std::string_view, 8> registersByCode = {"B", "C", "D", "E", "H", "L", "M", "A"};
constexpr std::array<std::string_view, 8> accumulatorMnemonics = {"ADD", "ADC", "SUB", "SBB",
                                                                  "ANA", "XRA", "ORA", "CMP"};
constexpr std::array<std::string_view, 8> jumpMnemonics = {"JNZ", "JZ", "JNC", "JC", "JPO", "JPE", "JP", "JM"};
constexpr std::array<std::string_view, 8> callMnemonics = {"CNZ", "CZ", "CNC", "CC", "CPO", "CPE", "CP", "CM"};
constexpr std::array<std::string_view, 8> returnMnemonics = {"RNZ", "RZ", "RNC", "RC", "RPO", "RPE", "RP", "RM"};

// The instructions that belong to no family.
constexpr SingleForm singleForms[] = {
    {0x02, {"STAX", '1', "BC"}}, {0x12, {"STAX", '1', "DE"}},  {0x0A, {"LDAX", '1', "BC"}},
    {0x1A, {"LDAX", '1', "DE"}}, {0x22, {"SHLD", '1', "I16"}}, {0x2A, {"LHLD", '1', "I16"}},
    {0x32, {"STA", '1', "I16"}}, {0x3A, {"LDA", '1', "I16"}},  {0xE3, {"XTHL", '1'}},
    {0xE9, {"PCHL", '1'}},       {0xEB, {"XCHG", '1'}},        {0xF9, {"SPHL", '1'}},
    {0xC6, {"ADI", '2', "I8"}},  {0xCE, {"ACI", '2', "I8"}},   {0xD6, {"SUI", '2', "I8"}},
    {0xDE, {"SBI", '2', "I8"}},  {0x07, {"RLC", '2'}},         {0x0F, {"RRC", '2'}},
    {0x17, {"RAL", '2'}},        {0x1F, {"RAR", '2'}},         {0x27, {"DAA", '2'}},
    {0xE6, {"ANI", '3', "I8"}},  {0xEE, {"XRI", '3', "I8"}},   {0xF6, {"ORI", '3', "I8"}},
    {0x2F, {"CMA", '3'}},        {0x37, {"STC", '3'}},         {0x3F, {"CMC", '3'}},
    {0xC3, {"JMP", '4', "I16"}}, {0xCD, {"CALL", '4', "I16"}}, {0xC9, {"RET", '4'}},
    {0xFE, {"CPI", '4', "I8"}},  {0x00, {"NOP", '5'}},         {0x76, {"HLT", '5'}},
    {0xDB, {"IN", '5', "I8"}},   {0xD3, {"OUT", '5', "I8"}}};

// The families of codes 00 to 3F, told apart by their low bits.
constexpr InstructionForm LowForm(unsigned opcode) {
    const std::string_view destination = registersByCode[opcode >> 3 & 7];
    const std::string_view pair = m8085::PairNames[opcode >> 4 & 3];
    switch (opcode & 0x0F) {
        case 0x1: return {"LXI", '1', pair, "I16"};
        case 0x3: return {"INX", '2', pair};
        case 0x9: return {"DAD", '2', pair};
        case 0xB: return {"DCX", '2', pair};
        default: break;
    }
    switch (opcode & 7) {
        case 4: return {"INR", '2', destination};
        case 5: return {"DCR", '2', destination};
        case 6: return {"MVI", '1', destination, "I8"};
        default: return {};
    }
}

// The families of codes C0 to FF.
constexpr InstructionForm HighForm(unsigned opcode) {
    const unsigned condition = opcode >> 3 & 7;
    const std::string_view pair = m8085::StackPairNames[opcode >> 4 & 3];
    switch (opcode & 7) {
        case 0: return {returnMnemonics[condition], '4'};
        case 2: return {jumpMnemonics[condition], '4', "I16"};
        case 4: return {callMnemonics[condition], '4', "I16"};
        default: break;
    }
    switch (opcode & 0x0F) {
        case 0x1: return {"POP", '1', pair};
        case 0x5: return {"PUSH", '1', pair};
        default: return {};
    }
}

constexpr InstructionForm FormOf(unsigned opcode) {
    for (const SingleForm& single : singleForms)
        if (single.Opcode == opcode) return single.Form;

    const std::string_view source = registersByCode[opcode & 7];
    switch (opcode >> 6) {
        case 0: return LowForm(opcode);
        case 1: return {"MOV", '1', registersByCode[opcode >> 3 & 7], source};
        case 2: return {accumulatorMnemonics[opcode >> 3 & 7], opcode < 0xA0 ? '2' : '3', source};
        default: return HighForm(opcode);
    }
}

constexpr std::size_t rowCount = 234;
constexpr std::size_t rowLength = 21;

using TableText = std::array<char, rowCount * rowLength>;

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

constexpr std::array<InstructionRow, rowCount> ReadRows() {
    std::array<InstructionRow, rowCount> rows;
    std::string_view text(tableText.data(), tableText.size());
    for (InstructionRow& row : rows) {
        const auto column = [text](std::size_t start, std::size_t width) {
            const std::string_view field = text.substr(start, width);
            return field.substr(0, field.find_last_not_of(' ') + 1);
        };
        const auto opcode = m8085::ReadHexNumber(column(0, 2), 0xFF);
        row = {static_cast<std::uint8_t>(*opcode), column(3, 4), {column(8, 3), column(12, 3)}};
        text.remove_prefix(rowLength);
    }
    return rows;
}

constexpr std::array<InstructionRow, rowCount> rows = ReadRows();

static_assert(NameAllMnemonics(rows));

constexpr auto rowsByOpcode = [] {
    std::array<const InstructionRow*, 256> byOpcode{};
    for (const InstructionRow& row : rows) byOpcode[row.Opcode] = &row;
    return byOpcode;
}();

bool BeginsWith(std::string_view text, std::u16string_view beginning) {
    return beginning.size() <= text.size() && std::equal(beginning.begin(), beginning.end(), text.begin());
}

}  // namespace

const std::string_view InstructionTable(tableText.data(), tableText.size());

std::string_view RegisterText(std::string_view name) {
    return name.size() == 2 && name != "SP" ? name.substr(0, 1) : name;
}

bool IsRegister(std::u16string_view word) {
    return std::ranges::any_of(RegisterNames, [word](std::string_view name) { return std::ranges::equal(name, word); });
}

std::span<const InstructionRow> InstructionRows() {
    return rows;
}

const InstructionRow* FindInstruction(std::uint8_t opcode) {
    return rowsByOpcode[opcode];
}

const InstructionRow* FindInstruction(std::u16string_view mnemonic, std::u16string_view firstOperand,
                                      std::u16string_view secondOperand) {
    // Most rows differ in the first letter already, which is seen fastest.
    const auto found = std::ranges::find_if(rows, [=](const InstructionRow& row) {
        return row.Mnemonic.size() == mnemonic.size() && static_cast<char16_t>(row.Mnemonic[0]) == mnemonic[0] &&
               BeginsWith(row.Mnemonic, mnemonic) && BeginsWith(row.Operands[0], firstOperand) &&
               BeginsWith(row.Operands[1], secondOperand);
    });
    return found == rows.end() ? nullptr : &*found;
}

}  // namespace assembler
