#include "console/simulation.h"

#include <algorithm>
#include <utility>

#include "assembler/explanation.h"
#include "assembler/warnings.h"
#include "console/text.h"
#include "editor/program_file.h"
#include "machine/text.h"

namespace console {

memedata::AddressRange Simulation::ProgramRange() const {
    return {static_cast<std::uint16_t>(Assembly.Origin), static_cast<std::uint16_t>(Assembly.End - 1)};
}

std::string_view Simulation::SourceOf(int line) const {
    if (line < 1 || line > std::ssize(SourceLines)) return {};
    return m8085::Trimmed(SourceLines[static_cast<std::size_t>(line - 1)]);
}

std::unique_ptr<Simulation> Unreadable(std::string name, std::string reason) {
    auto simulation = std::make_unique<Simulation>();
    simulation->Name = std::move(name);
    simulation->HowItEnded = Outcome::Unreadable;
    simulation->Message = std::move(reason);
    return simulation;
}

std::unique_ptr<Simulation> Assemble(std::string name, std::string_view file, std::int32_t origin) {
    editor::ProgramFile source = editor::DecodeProgramFile(file);
    if (!source.Problem.empty()) return Unreadable(std::move(name), std::move(source.Problem));
    auto simulation = std::make_unique<Simulation>();
    simulation->Name = std::move(name);
    for (const auto line : m8085::LinesOf(source.Text)) simulation->SourceLines.push_back(Printable(Utf8(line)));
    simulation->Program = assembler::PrepareProgram(source.Text);
    simulation->Source = std::move(source.Text);
    const assembler::PreparedProgram& program = simulation->Program;
    const auto excess = assembler::ExplainExcessLength(program.Length, program.LabelSplits);
    assembler::Assembly& assembly = simulation->Assembly;
    assembly = assembler::AssembleProgram(program.Text, simulation->Machine, simulation->Code, origin);
    if (assembly.Succeeded) {
        m8085::SetToProgramStart(simulation->Machine);
        simulation->Machine.PC = origin;
        return simulation;
    }
    simulation->HowItEnded = Outcome::NotAssembled;
    simulation->Message = excess ? *excess : Printable(Utf8(assembly.AsmErrorText));
    simulation->Line = program.SourceLine(assembly.FaultLine);
    if (assembly.PassesEndOfMemory) {
        simulation->Message = "The program goes beyond FFFF, the last address";
        return simulation;
    }
    simulation->Note = Printable(Utf8(assembler::ExplainFailure(program, assembly)));
    return simulation;
}

// An error that is not one of a line's own, such as that the program is too long, is one more.
void FindRemarks(Simulation& simulation) {
    std::vector<Remark>& remarks = simulation.Remarks;
    if (simulation.HowItEnded == Outcome::NotAssembled) {
        for (const auto& [line, message, cause] : assembler::FindFaults(simulation.Program))
            remarks.push_back({line, false, Printable(Utf8(message)), Printable(Utf8(cause))});
        if (!std::ranges::binary_search(remarks, simulation.Line, {}, &Remark::Line))
            remarks.push_back({simulation.Line, false, simulation.Message, simulation.Note});
    }
    for (const auto& [line, text] : assembler::FindWarnings(simulation.Program))
        remarks.push_back({line, true, Printable(Utf8(text)), {}});
    std::ranges::stable_sort(remarks, {}, &Remark::Line);
}

}  // namespace console
