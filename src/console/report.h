#pragma once

#include <string>

#include "console/options.h"
#include "console/simulation.h"

namespace console {

// What the program ends with: the highest of all programs counts.
enum ExitCode {
    Success = 0,
    DoesNotAssemble = 1,
    WrongUse = 2,  // or a file that cannot be read or written
    DoesNotEnd = 3,
    Unexpected = 4,
    AccessRefused = 5,
};

ExitCode ExitCodeOf(const Simulation& simulation, const Options& options);

// What went wrong, as tools write it: "sum.asm:3: error: Bad operand - 3G", with the note or the line of the source.
// Empty where all went well.
std::string Diagnosis(const Simulation& simulation);

// What a reader at a terminal wants to see of a program that was assembled. Only what --show asks for if it is there.
std::string TextReport(const Simulation& simulation, const Options& options);

// One line: the name, and pass or fail and why.
std::string Verdict(const Simulation& simulation, const Options& options);

// The whole outcome as one JSON object on one line.
std::string JsonReport(const Simulation& simulation, const Options& options);

}  // namespace console
