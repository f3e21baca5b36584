#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "assembler/assembler.h"
#include "assembler/source_preparation.h"
#include "datafiles/data_file.h"
#include "machine/code_map.h"
#include "machine/full_speed.h"
#include "machine/machine_state.h"

namespace console {

enum class Outcome {
    Assembled,   // and not run
    Ended,       // at HLT or where no instruction was assembled
    Unreadable,  // there is no program
    NotAssembled,
    LimitReached,   // in instructions
    NoInstruction,  // the program stands still at a code that is not an instruction
    Refused,        // the machine refused an access beyond its memory
};

// A byte that went out to a port, or came in from one.
struct Transfer {
    bool IsOut = false;
    std::uint8_t Port = 0;
    std::uint8_t Byte = 0;
    std::int32_t Address = 0;  // of the instruction
    std::int32_t TStates = 0;  // since the program's start, those of the instruction among them
};

// What is said about a line of the file.
struct Remark {
    int Line = 0;  // 0 for no line
    bool IsWarning = false;
    std::string Message;
    std::string Note;  // the likely cause of an error; empty for none
};

// One program, the machine of its own that it is assembled into and runs on, and what became of it.
struct Simulation {
    std::string Name;  // as it is shown
    Outcome HowItEnded = Outcome::Assembled;
    std::string Message;  // of the program's end, or what went wrong
    std::string Note;     // the likely cause of a failed assembly; empty for none
    int Line = 0;         // of the file, where something went wrong; 0 for no line

    std::u16string Source;                 // the text of the file
    std::vector<std::string> SourceLines;  // of it, in UTF-8
    assembler::PreparedProgram Program;
    assembler::Assembly Assembly;
    m8085::MachineState Machine;
    m8085::CodeMap Code;
    m8085::MachineState Before;  // as it was when the run began

    std::vector<Remark> Remarks;  // in the order of the lines, if they were looked for

    std::vector<Transfer> Traffic;  // if the run was watched for it
    bool TrafficIsCutOff = false;
    std::unique_ptr<m8085::Profile> Profile;  // if the run was profiled

    // Whether anything was assembled.
    bool HasInstructions() const { return !Assembly.Instructions.empty(); }

    // Where the assembled program lies. The first address is above the last if there is nothing.
    memedata::AddressRange ProgramRange() const;

    // The text of the file's line, without blanks around it; empty for line 0.
    std::string_view SourceOf(int line) const;
};

// A simulation of a program that cannot be read.
std::unique_ptr<Simulation> Unreadable(std::string name, std::string reason);

// Assembles a program file from `origin` upward, 0 to FFFF, into a new machine, which is left as after Assemble, at the
// program's start.
std::unique_ptr<Simulation> Assemble(std::string name, std::string_view file, std::int32_t origin);

// Looks for all faults of a program, and for what assembles but may not be meant so.
void FindRemarks(Simulation& simulation);

}  // namespace console
