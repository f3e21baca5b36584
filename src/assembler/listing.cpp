#include "assembler/listing.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "assembler/disassembly.h"
#include "machine/number_format.h"
#include "machine/text.h"

namespace assembler {

namespace {

constexpr std::size_t numberColumn = 16;
constexpr std::size_t numberWidth = 5;

// Without blanks at its end.
std::u16string Row(std::u16string addressAndBytes, std::size_t number, std::u16string_view line) {
    const std::string digits = std::to_string(number);
    addressAndBytes.resize(numberColumn + numberWidth - std::min(numberWidth, digits.size()), u' ');
    addressAndBytes += m8085::Wide(digits + "  ");
    addressAndBytes += line;
    addressAndBytes.erase(addressAndBytes.find_last_not_of(u" \t") + 1);
    return addressAndBytes;
}

}  // namespace

std::vector<std::u16string> ListingOf(std::u16string_view source, const PreparedProgram& program,
                                      const Assembly& assembly, const m8085::CodeMap& codeMap,
                                      const m8085::MemoryBytes& memory) {
    std::vector<std::u16string> listing;
    auto address = assembly.Instructions.begin();
    for (std::size_t number = 1; const std::u16string_view line : m8085::LinesOf(source)) {
        // A line that colons break can hold more than one instruction.
        std::vector<std::u16string> instructions;
        for (; address != assembly.Instructions.end(); ++address) {
            const int lineOfAddress = program.SourceLine(codeMap.LineAt(*address));
            if (lineOfAddress != static_cast<int>(number)) break;
            instructions.push_back(
                m8085::Wide(m8085::FormatHexLong(*address) + ' ' + InstructionBytes(memory, *address)));
        }
        listing.push_back(Row(instructions.empty() ? u"" : std::move(instructions.front()), number++, line));
        for (std::size_t i = 1; i < instructions.size(); ++i) listing.push_back(std::move(instructions[i]));
    }
    const std::size_t rows = listing.size();
    for (int slot = 0; slot < assembly.Labels.LabelCount(); ++slot) {
        const auto& label = assembly.Labels[slot];
        if (label.Kind != LabelKind::Definition) continue;
        if (listing.size() == rows) listing.emplace_back();
        listing.push_back(m8085::Wide(m8085::FormatHexLong(label.Address) + "  ") + label.Name);
    }
    return listing;
}

std::vector<std::u16string> ListingOf(std::u16string_view source) {
    const PreparedProgram program = PrepareProgram(source);
    const auto machine = std::make_unique<m8085::MachineState>();
    const auto codeMap = std::make_unique<m8085::CodeMap>();
    const Assembly assembly = AssembleProgram(program.Text, *machine, *codeMap);
    if (!assembly.Succeeded) return {};
    return ListingOf(source, program, assembly, *codeMap, machine->Memory);
}

}  // namespace assembler
