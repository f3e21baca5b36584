#include "console/simulation.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "assembler/disassembly.h"
#include "assembler/explanation.h"
#include "assembler/instruction_table.h"
#include "console/interruption.h"
#include "console/text.h"
#include "console/trace.h"
#include "editor/program_file.h"
#include "execution/messages.h"
#include "machine/full_speed.h"
#include "machine/number_format.h"

namespace console {

namespace {

std::vector<std::string> LinesOf(std::u16string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(u"\r\n"), text.size());
        lines.push_back(Printable(Utf8(text.substr(0, end))));
        const std::size_t lineEnd = text.substr(end).starts_with(u"\r\n") ? 2 : 1;
        text.remove_prefix(std::min(end + lineEnd, text.size()));
    }
    return lines;
}

// Whether the program has come to a place from which it does not go on, and which.
bool HasStopped(Simulation& simulation) {
    const m8085::MachineState& machine = simulation.Machine;
    if (machine.Refused.Reason != m8085::Limit::None)
        simulation.HowItEnded = Outcome::Refused;
    else if (machine.Halted || simulation.Code.LineAt(machine.PC) == 0)
        simulation.HowItEnded = Outcome::Ended;
    else if (machine.CanFetch() &&
             assembler::FindInstruction(machine.Memory[static_cast<std::size_t>(machine.PC)]) == nullptr)
        simulation.HowItEnded = Outcome::NoInstruction;
    else
        return false;
    return true;
}

// As many as the user has said, where 0 stands for all.
std::uint64_t Most(std::uint64_t count) {
    return count == 0 ? std::numeric_limits<std::uint64_t>::max() : count;
}

void RunAtFullSpeed(Simulation& simulation, std::uint64_t limit) {
    constexpr std::uint64_t slice = 1'000'000;
    while (limit > 0) {
        const std::uint64_t instructions = std::min(limit, slice);
        m8085::ExecuteSlice(simulation.Machine, simulation.Code, static_cast<int>(instructions));
        if (HasStopped(simulation)) return;
        DeferredSignals::Check();
        limit -= instructions;
    }
}

// Goes on at full speed once the trace has all its lines.
void RunTraced(Simulation& simulation, std::uint64_t limit, const Tracing& tracing) {
    constexpr std::size_t fullBuffer = 0x10000;
    m8085::MachineState& machine = simulation.Machine;
    std::string lines;
    const std::uint64_t traced = std::min(limit, Most(tracing.MostLines));
    bool hasStopped = false;
    for (std::uint64_t left = traced; !hasStopped && left > 0; --left) {
        const Fetched instruction = FetchAtPC(machine);
        machine.ExecuteInstruction();
        hasStopped = HasStopped(simulation);
        const bool isInstruction = assembler::FindInstruction(instruction.Bytes[0]) != nullptr;
        if (isInstruction && machine.Refused.Reason == m8085::Limit::None) AppendTraceLine(lines, instruction, machine);
        if (lines.size() < fullBuffer && !hasStopped && left > 1) continue;
        tracing.Sink(lines);
        lines.clear();
        DeferredSignals::Check();
    }
    if (hasStopped || traced == limit) return;
    tracing.Sink("The trace ends after " + std::to_string(traced) + " lines, the run goes on: see --trace-lines\n");
    RunAtFullSpeed(simulation, limit - traced);
}

std::string MessageFor(const Simulation& simulation, std::uint64_t limit) {
    const m8085::MachineState& machine = simulation.Machine;
    const std::string address = m8085::FormatHexLong(machine.PC);
    switch (simulation.HowItEnded) {
        case Outcome::Ended: return execution::EndMessage(machine.TStates, execution::RunMicroseconds);
        case Outcome::Refused: return execution::RefusalMessage(machine.Refused);
        case Outcome::NoInstruction:
            return "The byte " + m8085::FormatHexByte(machine.Memory[static_cast<std::size_t>(machine.PC)]) +
                   " at address " + address + " is not an instruction: the program stands still there.";
        default:
            return "The limit of " + std::to_string(limit) + " instructions has been reached at address " + address +
                   ".";
    }
}

}  // namespace

memedata::AddressRange Simulation::ProgramRange() const {
    return {static_cast<std::uint16_t>(m8085::ProgramOrigin), static_cast<std::uint16_t>(Assembly.End - 1)};
}

std::string_view Simulation::SourceOf(int line) const {
    if (line < 1 || line > std::ssize(SourceLines)) return {};
    std::string_view text = SourceLines[static_cast<std::size_t>(line - 1)];
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    return text.substr(0, text.find_last_not_of(" \t") + 1);
}

std::unique_ptr<Simulation> Unreadable(std::string name, std::string reason) {
    auto simulation = std::make_unique<Simulation>();
    simulation->Name = std::move(name);
    simulation->HowItEnded = Outcome::Unreadable;
    simulation->Message = std::move(reason);
    return simulation;
}

std::unique_ptr<Simulation> Assemble(std::string name, std::string_view file) {
    editor::ProgramFile source = editor::DecodeProgramFile(file);
    if (!source.Problem.empty()) return Unreadable(std::move(name), std::move(source.Problem));
    auto simulation = std::make_unique<Simulation>();
    simulation->Name = std::move(name);
    simulation->SourceLines = LinesOf(source.Text);
    simulation->Program = assembler::PrepareProgram(source.Text);
    const assembler::PreparedProgram& program = simulation->Program;
    const auto excess = assembler::ExplainExcessLength(program.Length, program.LabelSplits);
    assembler::Assembly& assembly = simulation->Assembly;
    assembly = assembler::AssembleProgram(program.Text, simulation->Machine, simulation->Code);
    if (assembly.Succeeded) {
        m8085::SetToProgramStart(simulation->Machine);
        return simulation;
    }
    simulation->HowItEnded = Outcome::NotAssembled;
    simulation->Message = excess ? *excess : Printable(Utf8(assembly.AsmErrorText));
    simulation->Line = program.SourceLine(assembly.FaultLine);
    simulation->Note = Printable(Utf8(assembler::ExplainFailure(program, assembly)));
    return simulation;
}

void Run(Simulation& simulation, std::uint64_t limit, const Tracing& tracing) {
    simulation.HowItEnded = Outcome::LimitReached;
    if (tracing.Sink)
        RunTraced(simulation, Most(limit), tracing);
    else
        RunAtFullSpeed(simulation, Most(limit));
    simulation.Message = MessageFor(simulation, limit);
    if (simulation.HowItEnded == Outcome::Ended) return;
    simulation.Line = simulation.Program.SourceLine(simulation.Code.LineAt(simulation.Machine.PC));
}

}  // namespace console
