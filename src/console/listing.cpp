#include "console/listing.h"

#include <algorithm>

#include "assembler/disassembly.h"
#include "console/text.h"
#include "machine/number_format.h"

namespace console {

namespace {

constexpr std::size_t numberColumn = 16;
constexpr std::size_t numberWidth = 5;

// The address of each instruction, by the number of its line in the file.
std::vector<std::vector<std::int32_t>> AddressesByLine(const Simulation& simulation) {
    std::vector<std::vector<std::int32_t>> addresses(simulation.SourceLines.size() + 2);
    for (std::int32_t address = simulation.Assembly.Origin; address < simulation.Assembly.End; ++address)
        if (const int line = simulation.Code.LineAt(address); line != 0)
            addresses[static_cast<std::size_t>(simulation.Program.SourceLine(line))].push_back(address);
    return addresses;
}

std::string AddressAndBytes(std::int32_t address, const m8085::MemoryBytes& memory) {
    std::string text = m8085::FormatHexLong(address) + "  ";
    auto byte = memory.begin() + address;
    for (int left = assembler::InstructionLength(*byte); left > 0; --left) text += m8085::FormatHexByte(*byte++) + ' ';
    text.pop_back();
    return text;
}

}  // namespace

std::string ComposeListing(const Simulation& simulation) {
    std::string text;
    const auto addresses = AddressesByLine(simulation);
    for (std::size_t line = 1; line <= simulation.SourceLines.size(); ++line) {
        std::string row = addresses[line].empty() ? "" : AddressAndBytes(addresses[line][0], simulation.Machine.Memory);
        const std::string number = std::to_string(line);
        row.resize(numberColumn, ' ');
        row += std::string(numberWidth - std::min(numberWidth, number.size()), ' ') + number + "  " +
               simulation.SourceLines[line - 1];
        text += row.substr(0, row.find_last_not_of(" \t") + 1) + '\n';
        // A line that colons break can hold more than one instruction.
        for (std::size_t i = 1; i < addresses[line].size(); ++i)
            text += AddressAndBytes(addresses[line][i], simulation.Machine.Memory) + '\n';
    }
    const assembler::LabelTable& labels = simulation.Assembly.Labels;
    for (int slot = 0; slot < labels.LabelCount(); ++slot)
        if (labels[slot].Kind == assembler::LabelKind::Definition)
            text += '\n' + m8085::FormatHexLong(labels[slot].Address) + "  " + Printable(Utf8(labels[slot].Name));
    return text + (text.ends_with('\n') ? "" : "\n");
}

}  // namespace console
