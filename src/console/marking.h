#pragma once

#include <string>
#include <vector>

#include "cases/case.h"
#include "console/exit_code.h"
#include "console/inputs.h"
#include "console/run.h"

namespace console {

// A case with the contents of its data files.
struct ReadyCase {
    cases::Case What;  // its data files with their folder
    std::vector<DataFile> DataFiles;
};

// The cases that a file states.
struct CaseFile {
    std::vector<ReadyCase> All;
    std::string Problem;  // why they cannot be run; empty where they can
};

// Reads the cases of a text in UTF-8, and their data files, which are in the folder of the path.
CaseFile ReadCaseFile(const std::string& path, std::string_view text);

// What became of one case.
struct CaseMark {
    std::string Name;
    std::string Problem;  // why it was not run, or did not end as it should
    std::int32_t TStates = 0;
    std::vector<cases::Failure> Failures;

    bool Passed() const { return Problem.empty() && Failures.empty(); }

    // What is wrong, in one line.
    std::string Reasons() const;
};

// What became of a program.
struct ProgramMark {
    std::string Name;
    std::string Problem;  // why no case was run
    ExitCode Code = Success;
    std::vector<CaseMark> Cases;

    std::size_t PassedCases() const;
    bool Passed() const { return Code == Success; }
};

// Runs the program in each case on a machine of its own.
ProgramMark Mark(Simulation& simulation, const CaseFile& cases, const Inputs& inputs, const RunSettings& settings);

}  // namespace console
