#include "console/trace.h"

#include <algorithm>

#include "assembler/disassembly.h"
#include "machine/number_format.h"

namespace console {

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
    for (std::uint8_t code = 0; code < m8085::PairNames.size(); ++code)
        text.append(" ").append(m8085::PairNames[code]) += '=' + m8085::FormatHexLong(after.GetRegPair(code, false));
    for (const auto& [name, flag] : m8085::Flags) {
        text += ' ';
        text += after.*flag ? name : std::string_view("..").substr(0, name.size());
    }
    text += "  " + std::to_string(after.TStates) + '\n';
}

}  // namespace console
