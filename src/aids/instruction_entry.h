#pragma once

#include <string>
#include <string_view>

#include "assembler/instruction_table.h"

namespace aids {

// What the user is to be asked for after a click of the Code Assistant.
enum class NextEntry { Mnemonic, Register, Digit, Label };

struct EntryStep {
    std::u16string Text;  // to be inserted into the program
    NextEntry Next = NextEntry::Mnemonic;
};

// The instruction that is being put together by clicks. What comes next is read from the instruction table. The lines
// that result are in lower case with a blank after the mnemonic, a comma between operands and CR LF at the end.
class InstructionEntry {
public:
    // Begins an instruction, instead of one that was not finished. The mnemonic is one of the table's.
    EntryStep ChooseMnemonic(std::string_view mnemonic);

    // Takes the caption of a live register key: a register, or a pair in full.
    EntryStep ChooseRegister(std::string_view caption);

    // Takes 0 to 15.
    EntryStep ChooseDigit(int digit);

    // Takes the label of a jump or call, whatever it is. Only after NextEntry::Label.
    static EntryStep ChooseLabel(std::u16string_view label);

    // Whether some form of the mnemonic has this register or pair in the place of the operand that is asked for.
    bool IsLive(std::string_view caption) const;

    // The chosen mnemonic, in upper case.
    std::string_view Mnemonic() const;

private:
    EntryStep CAGetOperand(std::u16string text);
    EntryStep GetDigits(std::u16string text, int count);

    const assembler::InstructionRow* row_ = nullptr;  // the mnemonic's first in the instruction table
    std::size_t CAOperandIndex = 0;                   // of the next operand
    int CADigitsWanted = 0;
    int CADigitsEntered = 0;
};

// A line that defines a label: the answer, with a colon if it does not end in one.
std::u16string LabelLine(std::u16string_view answer);

}  // namespace aids
