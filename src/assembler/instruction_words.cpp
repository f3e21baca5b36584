#include "assembler/instruction_words.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <memory>

#include "assembler/disassembly.h"
#include "assembler/instruction_table.h"
#include "machine/machine_state.h"

namespace assembler {

namespace {

constexpr std::array allWords = {
    InstructionWords{"MOV", "Copies the second register or memory byte to the first", ""},
    InstructionWords{"MVI", "Puts a number into a register or memory byte", ""},
    InstructionWords{"LXI", "Puts a 16-bit number into a register pair or SP", ""},
    InstructionWords{"LDA", "Loads A with the byte at an address", ""},
    InstructionWords{"STA", "Stores A at an address", ""},
    InstructionWords{"LDAX", "Loads A with the byte at the address in BC or DE", ""},
    InstructionWords{"STAX", "Stores A at the address in BC or DE", ""},
    InstructionWords{"LHLD", "Loads L with the byte at an address and H with the one after it", ""},
    InstructionWords{"SHLD", "Stores L at an address and H at the one after it", ""},
    InstructionWords{"XCHG", "Swaps DE and HL", ""},
    InstructionWords{"PUSH", "Puts a register pair, or A and the flags, on the stack", ""},
    InstructionWords{"POP", "Takes a register pair, or A and the flags, from the stack", "S Z AC P CY"},
    InstructionWords{"XTHL", "Swaps HL and the two bytes on top of the stack", ""},
    InstructionWords{"SPHL", "Copies HL to SP", ""},
    InstructionWords{"PCHL", "Goes on at the address in HL", ""},

    InstructionWords{"ADD", "Adds a register or memory byte to A", "S Z AC P CY"},
    InstructionWords{"ADC", "Adds a register or memory byte and CY to A", "S Z AC P CY"},
    InstructionWords{"ADI", "Adds a number to A", "S Z AC P CY"},
    InstructionWords{"ACI", "Adds a number and CY to A", "S Z AC P CY"},
    InstructionWords{"SUB", "Subtracts a register or memory byte from A", "S Z P CY"},
    InstructionWords{"SBB", "Subtracts a register or memory byte and CY from A", "S Z P CY"},
    InstructionWords{"SUI", "Subtracts a number from A", "S Z P CY"},
    InstructionWords{"SBI", "Subtracts a number and CY from A", "S Z P CY"},
    InstructionWords{"INR", "Adds 1 to a register or memory byte", "S Z P"},
    InstructionWords{"DCR", "Subtracts 1 from a register or memory byte", "S Z P"},
    InstructionWords{"INX", "Adds 1 to a register pair or SP", ""},
    InstructionWords{"DCX", "Subtracts 1 from a register pair or SP", ""},
    InstructionWords{"DAD", "Adds a register pair or SP to HL", "CY"},
    InstructionWords{"DAA", "Makes two decimal digits of A after an addition", "S Z P CY"},

    InstructionWords{"ANA", "A becomes A and a register or memory byte, bit by bit", "S Z P CY"},
    InstructionWords{"ANI", "A becomes A and a number, bit by bit", "S Z P CY"},
    InstructionWords{"ORA", "A becomes A or a register or memory byte, bit by bit", "S Z P CY"},
    InstructionWords{"ORI", "A becomes A or a number, bit by bit", "S Z P CY"},
    InstructionWords{"XRA", "A becomes A exclusive-or a register or memory byte, bit by bit", "S Z P CY"},
    InstructionWords{"XRI", "A becomes A exclusive-or a number, bit by bit", "S Z P CY"},
    InstructionWords{"CMP", "Sets the flags as if a register or memory byte were subtracted from A", "S Z P CY"},
    InstructionWords{"CPI", "Sets the flags as if a number were subtracted from A", "S Z P CY"},
    InstructionWords{"CMA", "Turns all bits of A around", ""},
    InstructionWords{"STC", "Sets CY", "CY"},
    InstructionWords{"CMC", "Turns CY around", "CY"},
    InstructionWords{"RLC", "Rotates A left; the bit that goes out comes in at the right and goes to CY", "CY"},
    InstructionWords{"RRC", "Rotates A right; the bit that goes out comes in at the left and goes to CY", "CY"},
    InstructionWords{"RAL", "Rotates A left through CY", "CY"},
    InstructionWords{"RAR", "Rotates A right through CY", "CY"},

    InstructionWords{"JMP", "Goes on at a label", ""},
    InstructionWords{"JNZ", "Goes on at a label if Z is 0: not zero, not equal", ""},
    InstructionWords{"JZ", "Goes on at a label if Z is 1: zero, equal", ""},
    InstructionWords{"JNC", "Goes on at a label if CY is 0: no carry, not below", ""},
    InstructionWords{"JC", "Goes on at a label if CY is 1: carry, below", ""},
    InstructionWords{"JPO", "Goes on at a label if P is 0: odd parity", ""},
    InstructionWords{"JPE", "Goes on at a label if P is 1: even parity", ""},
    InstructionWords{"JP", "Goes on at a label if S is 0: plus", ""},
    InstructionWords{"JM", "Goes on at a label if S is 1: minus", ""},
    InstructionWords{"CALL", "Calls the subroutine at a label", ""},
    InstructionWords{"CNZ", "Calls the subroutine at a label if Z is 0: not zero, not equal", ""},
    InstructionWords{"CZ", "Calls the subroutine at a label if Z is 1: zero, equal", ""},
    InstructionWords{"CNC", "Calls the subroutine at a label if CY is 0: no carry, not below", ""},
    InstructionWords{"CC", "Calls the subroutine at a label if CY is 1: carry, below", ""},
    InstructionWords{"CPO", "Calls the subroutine at a label if P is 0: odd parity", ""},
    InstructionWords{"CPE", "Calls the subroutine at a label if P is 1: even parity", ""},
    InstructionWords{"CP", "Calls the subroutine at a label if S is 0: plus", ""},
    InstructionWords{"CM", "Calls the subroutine at a label if S is 1: minus", ""},
    InstructionWords{"RET", "Goes back to where the subroutine was called", ""},
    InstructionWords{"RNZ", "Goes back from a subroutine if Z is 0: not zero, not equal", ""},
    InstructionWords{"RZ", "Goes back from a subroutine if Z is 1: zero, equal", ""},
    InstructionWords{"RNC", "Goes back from a subroutine if CY is 0: no carry, not below", ""},
    InstructionWords{"RC", "Goes back from a subroutine if CY is 1: carry, below", ""},
    InstructionWords{"RPO", "Goes back from a subroutine if P is 0: odd parity", ""},
    InstructionWords{"RPE", "Goes back from a subroutine if P is 1: even parity", ""},
    InstructionWords{"RP", "Goes back from a subroutine if S is 0: plus", ""},
    InstructionWords{"RM", "Goes back from a subroutine if S is 1: minus", ""},

    InstructionWords{"IN", "Loads A with the byte at a port", ""},
    InstructionWords{"OUT", "Sends A to a port", ""},
    InstructionWords{"NOP", "Does nothing", ""},
    InstructionWords{"HLT", "Ends the program", ""},
};

// With every flag the same, the condition of a jump, call or return holds for one of the two values.
int TimeWithFlags(std::uint8_t opcode, bool value) {
    const auto machine = std::make_unique<m8085::MachineState>();
    machine->S = machine->Z = machine->AC = machine->P = machine->CY = value;
    machine->PC = m8085::ProgramOrigin;
    machine->SP = m8085::ProgramOrigin;
    machine->Memory[m8085::ProgramOrigin] = opcode;
    machine->ExecuteInstruction();
    return machine->TStates;
}

}  // namespace

std::span<const InstructionWords> AllInstructionWords() {
    return allWords;
}

const InstructionWords& WordsFor(std::string_view mnemonic) {
    const auto found = std::ranges::find(allWords, mnemonic, &InstructionWords::Mnemonic);
    assert(found != allWords.end());
    return *found;
}

std::string_view FlagsChangedBy(std::uint8_t opcode) {
    const int anchor = AnchorOf(opcode);
    if (anchor == NoAnchor) return {};
    const std::string_view mnemonic = MnemonicAt(anchor);
    if (mnemonic == "POP" && OperandAt(anchor, 1) != "PSW") return {};
    return WordsFor(mnemonic).Flags;
}

InstructionTime TimeOf(std::uint8_t opcode) {
    const auto [notTaken, taken] = std::minmax({TimeWithFlags(opcode, false), TimeWithFlags(opcode, true)});
    return {taken, notTaken};
}

}  // namespace assembler
