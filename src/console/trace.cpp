#include "console/trace.h"

#include <algorithm>

#include "assembler/disassembly.h"
#include "machine/number_format.h"

namespace console {

namespace {

void AppendPair(std::string& text, std::string_view name, std::int32_t value) {
    text += name;
    text += m8085::FormatHexLong(value);
}

}  // namespace

Fetched FetchAtPC(const m8085::MachineState& machine) {
    Fetched fetched{machine.PC, {}};
    if (machine.CanFetch())
        std::copy_n(machine.Memory.begin() + machine.PC, fetched.Bytes.size(), fetched.Bytes.begin());
    return fetched;
}

void AppendTraceLine(std::string& text, const Fetched& instruction, const m8085::MachineState& after) {
    constexpr std::size_t mnemonicColumn = 16;
    constexpr std::size_t registersColumn = 29;
    const std::size_t start = text.size();
    const auto padTo = [&text, start](std::size_t column) { text.resize(start + column, ' '); };

    text += m8085::FormatHexLong(instruction.Address) + ' ' + assembler::InstructionBytes(instruction.Bytes);
    padTo(mnemonicColumn);
    text += assembler::Disassemble(instruction.Bytes);
    padTo(registersColumn);
    text += "A=" + m8085::FormatHexByte(after.A);
    AppendPair(text, " BC=", after.GetRegPair(0, false));
    AppendPair(text, " DE=", after.GetRegPair(1, false));
    AppendPair(text, " HL=", after.GetRegPair(2, false));
    AppendPair(text, " SP=", after.SP);
    for (const auto& [name, flag] : m8085::Flags) {
        text += ' ';
        text += after.*flag ? name : std::string_view("..").substr(0, name.size());
    }
    text += "  " + std::to_string(after.TStates) + '\n';
}

}  // namespace console
