#include "console/marking.h"

#include <algorithm>
#include <memory>

#include "console/report.h"
#include "files/path.h"
#include "machine/text.h"

namespace console {

namespace {

std::string InLine(int line, const std::string& text) {
    return "line " + std::to_string(line) + ": " + text;
}

std::vector<DataFile> ReadDataFiles(const std::vector<std::string>& paths) {
    std::vector<DataFile> dataFiles;
    for (const std::string& path : paths) dataFiles.emplace_back(path, files::ReadFileOrPipe(files::PathOf(path)));
    return dataFiles;
}

void RunCase(Simulation& simulation, const ReadyCase& which, const Inputs& inputs, const RunSettings& settings,
             CaseMark& mark) {
    m8085::MachineState& machine = simulation.Machine;
    inputs.Prepare(machine);
    for (const DataFile& file : which.DataFiles) file.LoadInto(machine.Memory);
    for (const cases::ClaimOfLine& claim : which.What.Given) claim.What.Store(machine);
    Run(simulation, settings);
    mark.TStates = machine.TStates;
    if (simulation.HowItEnded == Outcome::Ended)
        mark.Failures = cases::Judge(which.What, machine);
    else
        mark.Problem = ProblemOf(simulation);
}

// Why no case can be run, and what the program ends with then.
void FindProblem(ProgramMark& mark, const Simulation& simulation, const CaseFile& cases) {
    if (simulation.HowItEnded != Outcome::Assembled) {
        mark.Problem = ProblemOf(simulation);
        mark.Code = simulation.HowItEnded == Outcome::Unreadable ? WrongUse : DoesNotAssemble;
        return;
    }
    mark.Problem = simulation.HasInstructions() ? cases.Problem : "there is no instruction";
    if (!mark.Problem.empty()) mark.Code = Unexpected;
}

}  // namespace

CaseFile ReadCaseFile(const std::string& path, std::string_view text) {
    cases::Cases cases = cases::ReadCases(text);
    std::vector<std::string> problems;
    for (const cases::Fault& fault : cases.Faults) problems.push_back(InLine(fault.Line, fault.Text));
    CaseFile ready;
    const std::filesystem::path folder = files::PathOf(path).parent_path();
    for (cases::Case& which : cases.All) {
        for (std::string& name : which.DataFiles) name = files::TextOf(folder / files::PathOf(name));
        std::vector<DataFile> dataFiles;
        try {
            dataFiles = ReadDataFiles(which.DataFiles);
        } catch (const UsageError& problem) {
            problems.push_back(InLine(which.Line, problem.what()));
        }
        ready.All.push_back({std::move(which), std::move(dataFiles)});
    }
    if (ready.All.empty() && problems.empty()) problems.emplace_back("it says no case: no comment begins with gives");
    ready.Problem = m8085::Joined(problems, "; ", "; ");
    return ready;
}

std::string CaseMark::Reasons() const {
    std::vector<std::string> reasons;
    if (!Problem.empty()) reasons.push_back(Problem);
    for (const cases::Failure& failure : Failures) reasons.push_back(Expected(failure.Expected.What, failure.Found));
    return m8085::Joined(reasons, "; ", "; ");
}

std::size_t ProgramMark::PassedCases() const {
    return static_cast<std::size_t>(std::ranges::count_if(Cases, &CaseMark::Passed));
}

ProgramMark Mark(Simulation& simulation, const CaseFile& cases, const Inputs& inputs, const RunSettings& settings) {
    ProgramMark mark{simulation.Name, {}, Success, {}};
    FindProblem(mark, simulation, cases);
    const auto assembled = std::make_unique<m8085::MachineState>(simulation.Machine);
    for (const ReadyCase& which : cases.All) {
        CaseMark& caseMark = mark.Cases.emplace_back(CaseMark{which.What.Name, mark.Problem, 0, {}});
        if (!mark.Problem.empty()) continue;
        simulation.Machine = *assembled;
        RunCase(simulation, which, inputs, settings, caseMark);
        if (!caseMark.Passed()) mark.Code = Unexpected;
    }
    return mark;
}

}  // namespace console
