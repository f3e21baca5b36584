#include "aids/program_tip.h"

#include <algorithm>
#include <array>
#include <optional>

#include "aids/mnemonic_tip.h"
#include "assembler/disassembly.h"
#include "assembler/instruction_table.h"
#include "assembler/line_words.h"
#include "cases/place.h"
#include "machine/bytes.h"
#include "machine/number_format.h"
#include "machine/text.h"
#include "panels/tips.h"

namespace aids {

namespace {

using m8085::FormatHexByte;
using m8085::FormatHexLong;
using m8085::Wide;
using Text = std::u16string;
using View = std::u16string_view;

// A word and those that it stands among, in upper case.
struct WordInLine {
    std::array<Text, 3> Words;  // mnemonic and operands; empty where there is none
    std::size_t Place = 0;      // of the word itself

    View Word() const { return Words[Place]; }
};

// Of a line that its colons do not break yet, each part counts as a line of its own.
std::optional<WordInLine> FindWord(View line, std::size_t column) {
    line = line.substr(0, line.find(u';'));
    if (column >= line.size()) return std::nullopt;
    const std::size_t start = column == 0 ? 0 : line.rfind(u':', column - 1) + 1;
    const std::size_t end = std::min(line.find(u':', column), line.size() - 1) + 1;
    const auto words = assembler::PlacedWordsOfLine(line.substr(start, end - start));
    const auto covers = [at = column - start](const assembler::PlacedWord& word) {
        return at >= word.Start && at < word.Start + word.Text.size();
    };
    const auto found = std::ranges::find_if(words, covers);
    if (found == words.end()) return std::nullopt;
    WordInLine result;
    const auto index = static_cast<std::size_t>(found - words.begin());
    result.Place = index % result.Words.size();
    for (std::size_t at = index - result.Place, place = 0; place < result.Words.size() && at < words.size();)
        result.Words[place++] = words[at++].Text;
    return result;
}

// What the instruction has in the place of the operand: a register, "I8" or "I16"; empty where the operand does not
// fit.
std::string_view ColumnOf(const WordInLine& operand) {
    const auto find = [&words = operand.Words](std::size_t fitting) {
        return assembler::FindInstruction(words[0], fitting > 0 ? View(words[1]) : View(),
                                          fitting > 1 ? View(words[2]) : View());
    };
    const auto* row = find(operand.Place);
    if (row != nullptr) return row->Operands[operand.Place - 1];
    row = find(operand.Place - 1);
    const std::string_view column = row == nullptr ? std::string_view() : row->Operands[operand.Place - 1];
    return column.starts_with('I') ? column : std::string_view();
}

std::string RegisterTip(std::string_view name, const m8085::MachineState& machine) {
    if (name == "M") {
        const std::int32_t address = machine.GetRegPair(2, false);
        const std::uint8_t byte = machine.Memory[static_cast<std::size_t>(address)];
        return "M, the byte at " + FormatHexLong(address) + ", is " + FormatHexByte(byte) + '\n' +
               panels::ByteTip(byte);
    }
    const cases::Place place = cases::ReadPlace(name);
    const int value = place.Value(machine, place.First);
    const std::string tip = std::string(name) + " is " + place.Format(value) + '\n';
    if (name == "PSW")
        return tip + "A is " + FormatHexByte(machine.A) + ", F is " + FormatHexByte(machine.GetFlagByte());
    return tip + (name.size() > 1 ? panels::AddressTip(value) : panels::ByteTip(m8085::Low(value)));
}

std::string OperandTip(const WordInLine& operand, const m8085::MachineState& machine) {
    const std::string_view column = ColumnOf(operand);
    if (!column.starts_with('I')) return column.empty() ? std::string() : RegisterTip(column, machine);
    const auto number = assembler::ReadNumber(operand.Word());
    if (!number || *number > 0xFFFF) return {};
    return panels::NumberTip(*number, column == "I8" && *number <= 0xFF ? 8 : 16);
}

Text LabelTip(View name, const assembler::Assembly* assembled) {
    if (assembled == nullptr) return {};
    const assembler::LabelTable& labels = assembled->Labels;
    const int slot = labels.FindLabel({.Name = Text(name)}, assembler::LabelKind::Definition);
    if (slot == assembler::LabelTable::NotFound) return {};
    const auto& [label, address, kind, line] = labels[slot];
    return assembler::Shortened(label) + u" is " + Wide(FormatHexLong(address)) + u", defined in line " +
           Wide(std::to_string(line));
}

Text WordTip(const WordInLine& word, const m8085::MachineState& machine, const assembler::Assembly* assembled) {
    const bool isFirst = word.Place == 0;
    if (isFirst && word.Word().ends_with(u':'))
        return LabelTip(word.Word().substr(0, word.Word().size() - 1), assembled);
    const auto* row = assembler::FindInstruction(word.Words[0]);
    if (row == nullptr) return {};
    if (isFirst) return Wide(MnemonicTip(row->Mnemonic));
    return row->TakesLabel() ? LabelTip(word.Word(), assembled) : Wide(OperandTip(word, machine));
}

Text LineTip(int line, const m8085::MachineState& machine, const m8085::CodeMap& codeMap,
             const assembler::Assembly& assembled) {
    const auto lineOf = [&codeMap](std::int32_t address) { return codeMap.LineAt(address); };
    const auto found = std::ranges::lower_bound(assembled.Instructions, line, {}, lineOf);
    if (found == assembled.Instructions.end() || lineOf(*found) != line) return {};
    return Wide(FormatHexLong(*found) + ':' + assembler::InstructionBytes(machine.Memory, *found));
}

}  // namespace

std::u16string ProgramTip(const TextPlace& place, const m8085::MachineState& machine, const m8085::CodeMap& codeMap,
                          const assembler::Assembly* assembled) {
    if (const auto word = FindWord(place.Line, place.Column))
        if (Text tip = WordTip(*word, machine, assembled); !tip.empty()) return tip;
    return assembled == nullptr ? Text() : LineTip(place.Number, machine, codeMap, *assembled);
}

}  // namespace aids
