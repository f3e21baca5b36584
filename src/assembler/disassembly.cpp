#include "assembler/disassembly.h"

#include <algorithm>
#include <utility>

#include "assembler/instruction_table.h"
#include "machine/bytes.h"
#include "machine/number_format.h"

namespace assembler {

namespace {

std::string OperandText(std::string_view column, std::span<const std::uint8_t> bytes) {
    if (column == "I8") return m8085::FormatHexByte(bytes[1]);
    if (column == "I16") return m8085::FormatHexLong(m8085::Join(bytes[2], bytes[1]));
    return std::string(RegisterText(column));
}

}  // namespace

int InstructionLength(std::uint8_t opcode) {
    const InstructionRow* row = FindInstruction(opcode);
    int length = 1;
    if (row == nullptr) return length;
    for (const std::string_view operand : row->Operands) length += operand == "I8" ? 1 : operand == "I16" ? 2 : 0;
    return length;
}

std::string InstructionBytes(std::span<const std::uint8_t> memory, std::int32_t at) {
    const auto rest = memory.subspan(m8085::Index(at));
    const auto length = static_cast<std::size_t>(InstructionLength(rest[0]));
    std::string text;
    for (const std::uint8_t byte : rest.first(std::min(length, rest.size()))) text += ' ' + m8085::FormatHexByte(byte);
    return text;
}

std::string Disassemble(std::span<const std::uint8_t> bytes) {
    const InstructionRow* row = FindInstruction(bytes[0]);
    if (row == nullptr) return {};
    std::string text(row->Mnemonic);
    char separator = ' ';
    for (const std::string_view operand : row->Operands)
        if (!operand.empty()) text += std::exchange(separator, ',') + OperandText(operand, bytes);
    return text;
}

}  // namespace assembler
