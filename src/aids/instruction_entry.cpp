#include "aids/instruction_entry.h"

#include <algorithm>
#include <cassert>

#include "machine/number_format.h"
#include "machine/text.h"

namespace aids {

namespace {

using m8085::Wide;

constexpr std::u16string_view lineEnd = u"\r\n";

}  // namespace

EntryStep InstructionEntry::ChooseMnemonic(std::string_view mnemonic) {
    row_ = assembler::FindInstruction(Wide(mnemonic));
    assert(row_ != nullptr);
    CAOperandIndex = 0;
    return CAGetOperand(m8085::LowerCase(Wide(mnemonic)) + u' ');
}

EntryStep InstructionEntry::ChooseRegister(std::string_view caption) {
    return CAGetOperand(m8085::LowerCase(Wide(assembler::RegisterText(caption))));
}

EntryStep InstructionEntry::ChooseDigit(int digit) {
    assert(digit >= 0 && digit <= 15);
    const std::u16string text = m8085::LowerCase(Wide(m8085::HexDigits.substr(static_cast<std::size_t>(digit), 1)));
    ++CADigitsEntered;
    if (CADigitsEntered == CADigitsWanted) return CAGetOperand(text);
    return {text, NextEntry::Digit};
}

EntryStep InstructionEntry::ChooseLabel(std::u16string_view label) {
    return {std::u16string(label).append(lineEnd), NextEntry::Mnemonic};
}

// Appends to the text what stands before the next operand, or ends the line.
EntryStep InstructionEntry::CAGetOperand(std::u16string text) {
    const auto& operands = row_->Operands;
    if (CAOperandIndex == operands.size() || operands[CAOperandIndex].empty())
        return {text.append(lineEnd), NextEntry::Mnemonic};
    if (CAOperandIndex > 0) text += u',';
    const std::string_view operand = operands[CAOperandIndex++];

    if (operand == "I8") return GetDigits(std::move(text), 2);
    if (row_->TakesLabel()) return {std::move(text), NextEntry::Label};
    if (operand == "I16") return GetDigits(std::move(text), 4);
    return {std::move(text), NextEntry::Register};
}

EntryStep InstructionEntry::GetDigits(std::u16string text, int count) {
    CADigitsEntered = 0;
    CADigitsWanted = count;
    return {std::move(text), NextEntry::Digit};
}

bool InstructionEntry::IsLive(std::string_view caption) const {
    return std::ranges::any_of(assembler::InstructionRows(), [&](const assembler::InstructionRow& row) {
        return row.Mnemonic == Mnemonic() && row.Operands[CAOperandIndex - 1] == caption;
    });
}

std::string_view InstructionEntry::Mnemonic() const {
    return row_->Mnemonic;
}

std::u16string LabelLine(std::u16string_view answer) {
    std::u16string line(answer);
    if (!line.ends_with(u':')) line += u':';
    return line.append(lineEnd);
}

}  // namespace aids
