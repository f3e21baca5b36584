#include "assembler/instruction_words.h"

#include <algorithm>
#include <cassert>
#include <memory>

#include "assembler/instruction_table.h"
#include "assembler/mnemonic_list.h"
#include "machine/machine_state.h"

namespace assembler {

namespace {

constexpr InstructionWords allWords[] = {
    {"MOV", "Copies the second register or memory byte to the first", ""},
    {"MVI", "Puts a number into a register or memory byte", ""},
    {"LXI", "Puts a 16-bit number into a register pair or SP", ""},
    {"LDA", "Loads A with the byte at an address", ""},
    {"STA", "Stores A at an address", ""},
    {"LDAX", "Loads A with the byte at the address in BC or DE", ""},
    {"STAX", "Stores A at the address in BC or DE", ""},
    {"LHLD", "Loads L with the byte at an address and H with the one after it", ""},
    {"SHLD", "Stores L at an address and H at the one after it", ""},
    {"XCHG", "Swaps DE and HL", ""},
    {"PUSH", "Puts a register pair, or A and the flags, on the stack", ""},
    {"POP", "Takes a register pair, or A and the flags, from the stack", "S Z AC P CY"},
    {"XTHL", "Swaps HL and the two bytes on top of the stack", ""},
    {"SPHL", "Copies HL to SP", ""},
    {"PCHL", "Jumps to the address in HL", ""},

    {"ADD", "Adds a register or memory byte to A", "S Z AC P CY"},
    {"ADC", "Adds a register or memory byte and CY to A", "S Z AC P CY"},
    {"ADI", "Adds a number to A", "S Z AC P CY"},
    {"ACI", "Adds a number and CY to A", "S Z AC P CY"},
    {"SUB", "Subtracts a register or memory byte from A", "S Z P CY"},
    {"SBB", "Subtracts a register or memory byte and CY from A", "S Z P CY"},
    {"SUI", "Subtracts a number from A", "S Z P CY"},
    {"SBI", "Subtracts a number and CY from A", "S Z P CY"},
    {"INR", "Adds 1 to a register or memory byte", "S Z P"},
    {"DCR", "Subtracts 1 from a register or memory byte", "S Z P"},
    {"INX", "Adds 1 to a register pair or SP", ""},
    {"DCX", "Subtracts 1 from a register pair or SP", ""},
    {"DAD", "Adds a register pair or SP to HL", "CY"},
    {"DAA", "Adjusts A to two decimal digits after an addition", "S Z P CY"},

    {"ANA", "A becomes A AND a register or memory byte, bit by bit", "S Z P CY"},
    {"ANI", "A becomes A AND a number, bit by bit", "S Z P CY"},
    {"ORA", "A becomes A OR a register or memory byte, bit by bit", "S Z P CY"},
    {"ORI", "A becomes A OR a number, bit by bit", "S Z P CY"},
    {"XRA", "A becomes A exclusive-OR a register or memory byte, bit by bit", "S Z P CY"},
    {"XRI", "A becomes A exclusive-OR a number, bit by bit", "S Z P CY"},
    {"CMP", "Sets the flags as if a register or memory byte were subtracted from A", "S Z P CY"},
    {"CPI", "Sets the flags as if a number were subtracted from A", "S Z P CY"},
    {"CMA", "Inverts all bits of A", ""},
    {"STC", "Sets CY", "CY"},
    {"CMC", "Inverts CY", "CY"},
    {"RLC", "Rotates A left; the bit that leaves enters at the right and goes to CY", "CY"},
    {"RRC", "Rotates A right; the bit that leaves enters at the left and goes to CY", "CY"},
    {"RAL", "Rotates A left through CY", "CY"},
    {"RAR", "Rotates A right through CY", "CY"},

    {"JMP", "Jumps to a label", ""},
    {"JNZ", "Jumps to a label if Z is 0: not zero, not equal", ""},
    {"JZ", "Jumps to a label if Z is 1: zero, equal", ""},
    {"JNC", "Jumps to a label if CY is 0: no carry, not below", ""},
    {"JC", "Jumps to a label if CY is 1: carry, below", ""},
    {"JPO", "Jumps to a label if P is 0: odd parity", ""},
    {"JPE", "Jumps to a label if P is 1: even parity", ""},
    {"JP", "Jumps to a label if S is 0: plus", ""},
    {"JM", "Jumps to a label if S is 1: minus", ""},
    {"CALL", "Calls the subroutine at a label", ""},
    {"CNZ", "Calls the subroutine at a label if Z is 0: not zero, not equal", ""},
    {"CZ", "Calls the subroutine at a label if Z is 1: zero, equal", ""},
    {"CNC", "Calls the subroutine at a label if CY is 0: no carry, not below", ""},
    {"CC", "Calls the subroutine at a label if CY is 1: carry, below", ""},
    {"CPO", "Calls the subroutine at a label if P is 0: odd parity", ""},
    {"CPE", "Calls the subroutine at a label if P is 1: even parity", ""},
    {"CP", "Calls the subroutine at a label if S is 0: plus", ""},
    {"CM", "Calls the subroutine at a label if S is 1: minus", ""},
    {"RET", "Returns to where the subroutine was called", ""},
    {"RNZ", "Returns from a subroutine if Z is 0: not zero, not equal", ""},
    {"RZ", "Returns from a subroutine if Z is 1: zero, equal", ""},
    {"RNC", "Returns from a subroutine if CY is 0: no carry, not below", ""},
    {"RC", "Returns from a subroutine if CY is 1: carry, below", ""},
    {"RPO", "Returns from a subroutine if P is 0: odd parity", ""},
    {"RPE", "Returns from a subroutine if P is 1: even parity", ""},
    {"RP", "Returns from a subroutine if S is 0: plus", ""},
    {"RM", "Returns from a subroutine if S is 1: minus", ""},

    {"IN", "Loads A with the byte at a port", ""},
    {"OUT", "Sends A to a port", ""},
    {"NOP", "Does nothing", ""},
    {"HLT", "Ends the program", ""},
};

static_assert(NameAllMnemonics(allWords));

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
    assert(found != std::end(allWords));
    return *found;
}

std::string_view FlagsChangedBy(std::uint8_t opcode) {
    const InstructionRow* row = FindInstruction(opcode);
    if (row == nullptr || (row->Mnemonic == "POP" && row->Operands[0] != "PSW")) return {};
    return WordsFor(row->Mnemonic).Flags;
}

InstructionTime TimeOf(std::uint8_t opcode) {
    const auto [notTaken, taken] = std::minmax({TimeWithFlags(opcode, false), TimeWithFlags(opcode, true)});
    return {taken, notTaken};
}

}  // namespace assembler
