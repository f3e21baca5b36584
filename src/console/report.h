#pragma once

#include <string>

#include "console/exit_code.h"
#include "console/options.h"
#include "console/simulation.h"

namespace console {

ExitCode ExitCodeOf(const Simulation& simulation, const Options& options);

// What was found of the lines, as tools write it: "sum.asm:3: warning: ...", and at the end how many faults there are.
std::string Remarks(const Simulation& simulation);

// What went wrong, as tools write it: "sum.asm:3: error: Bad operand - 3G", with the note or the line of the source.
// Empty where all went well.
std::string Diagnosis(const Simulation& simulation);

// The same in one line for a sheet: "line 3: Bad operand - 3G (a number is hexadecimal)".
std::string ProblemOf(const Simulation& simulation);

// "expected A=05, found 06".
std::string Expected(const cases::Claim& claim, const std::string& found);

// What a reader at a terminal wants to see of a program that was assembled. Only what --show asks for if it is there.
std::string TextReport(const Simulation& simulation, const Options& options);

// One line: the name, and pass or fail and why.
std::string Verdict(const Simulation& simulation, const Options& options);

// The whole outcome as one JSON object on one line.
std::string JsonReport(const Simulation& simulation, const Options& options);

}  // namespace console
