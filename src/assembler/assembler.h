#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "assembler/label_table.h"
#include "machine/code_map.h"
#include "machine/machine_state.h"

namespace assembler {

// Characters in UTF-16 units, the line feed after the last line included.
inline constexpr std::size_t LongestPreparedText = 32766;

// What is said of a failure that has no words of its own.
inline constexpr std::u16string_view GeneralFailure = u"Bad operand";

// The result of an assembly. The two error fields are set only when it failed.
struct Assembly {
    bool Succeeded = false;
    int AsmErrorLine = 0;  // source line, counted from 1; 0 where no line can be named
    std::u16string AsmErrorText;
    LabelTable Labels;

    std::int32_t Origin = m8085::ProgramOrigin;  // the address of its first byte
    std::int32_t End = m8085::ProgramOrigin;     // the address after the last byte of the program

    std::vector<std::int32_t> Instructions;  // the addresses of their opcodes, in ascending order

    // The line at fault, which AsmErrorLine does not always name. 0 where no line is at fault: on success, and for a
    // text that is too long.
    int FaultLine = 0;

    bool PassesEndOfMemory = false;  // why it failed: there is no room up to FFFF
};

// The value of a number as programs write it: hexadecimal digits in either case, and perhaps an upper-case H after
// them. What is above FFFF reads as 10000. Nothing for any other text.
std::optional<std::int32_t> ReadNumber(std::u16string_view word);

// Such a number without its H.
std::u16string_view WithoutFinalH(std::u16string_view word);

// Translates a program into Memory from `origin`, 0 to FFFF, upward and notes each opcode's source line in the code
// map. The text is a prepared one: labels on lines of their own, every line ended by a line feed. All numbers in it are
// hexadecimal. On success Halted becomes false. A failure ends the assembly at once; what was written by then stays.
Assembly AssembleProgram(std::u16string_view text, m8085::MachineState& machine, m8085::CodeMap& codeMap,
                         std::int32_t origin = m8085::ProgramOrigin);

}  // namespace assembler
