#include "assembler/disassembly.h"

#include "assembler/instruction_table.h"
#include "machine/bytes.h"
#include "machine/number_format.h"

namespace assembler {

namespace {

using Anchors = std::array<int, 256>;

Anchors AnchorsByOpcode() {
    Anchors anchors{};
    for (int row = 0; row < InstructionRows; ++row) {
        const int anchor = FirstAnchor + row * InstructionRowLength;
        anchors[OpcodeAt(anchor)] = anchor;
    }
    return anchors;
}

// A pair goes by its first register, but for those that have none.
std::string OperandText(std::string_view column, const std::array<std::uint8_t, 3>& bytes) {
    if (column == "I8") return m8085::FormatHexByte(bytes[1]);
    if (column == "I16") return m8085::FormatHexLong(m8085::Join(bytes[2], bytes[1]));
    const bool isPair = column.size() == 2 && column != "SP";
    return std::string(isPair ? column.substr(0, 1) : column);
}

}  // namespace

int AnchorOf(std::uint8_t opcode) {
    static const Anchors anchors = AnchorsByOpcode();
    return anchors[opcode];
}

int InstructionLength(std::uint8_t opcode) {
    const int anchor = AnchorOf(opcode);
    if (anchor == NoAnchor) return 1;
    int length = 1;
    for (const int column : {1, 2}) {
        if (OperandAt(anchor, column) == "I8") length += 1;
        if (OperandAt(anchor, column) == "I16") length += 2;
    }
    return length;
}

std::string Disassemble(std::array<std::uint8_t, 3> bytes) {
    const int anchor = AnchorOf(bytes[0]);
    if (anchor == NoAnchor) return {};
    std::string text(MnemonicAt(anchor));
    for (const int column : {1, 2}) {
        const std::string operand = OperandText(OperandAt(anchor, column), bytes);
        if (!operand.empty()) text += (column == 1 ? ' ' : ',') + operand;
    }
    return text;
}

}  // namespace assembler
