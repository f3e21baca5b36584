#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace assembler {

// What an instruction does, in words for a learner.
struct InstructionWords {
    std::string_view Mnemonic;
    std::string_view Does;   // a sentence without its full stop
    std::string_view Flags;  // those that it sets or clears, in the order S Z AC P CY; empty for none
};

// One for each mnemonic, in the order in which they are taught: data transfer, arithmetic, logic, jumps and calls, and
// the rest.
std::span<const InstructionWords> AllInstructionWords();

// Takes a mnemonic of the instruction table, in upper case.
const InstructionWords& WordsFor(std::string_view mnemonic);

// The flags that the instruction with this opcode changes. Of a mnemonic's forms they are the same but for POP, where
// only POP PSW changes any. Empty for a code that is not an instruction.
std::string_view FlagsChangedBy(std::uint8_t opcode);

// T-states of an instruction as the machine itself counts them. The two differ only for conditional jumps, calls and
// returns.
struct InstructionTime {
    int Taken = 0;     // the condition holds
    int NotTaken = 0;  // it does not

    bool operator==(const InstructionTime&) const = default;
};

// Zeros for a code that is not an instruction.
InstructionTime TimeOf(std::uint8_t opcode);

}  // namespace assembler
