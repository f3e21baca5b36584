#include "console/run.h"

#include <algorithm>
#include <array>
#include <limits>

#include "assembler/instruction_table.h"
#include "console/interruption.h"
#include "console/trace.h"
#include "execution/messages.h"
#include "machine/number_format.h"

namespace console {

namespace {

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

void Execute(Simulation& simulation, int instructions) {
    if (simulation.Profile)
        m8085::ExecuteSlice(simulation.Machine, simulation.Code, *simulation.Profile, instructions);
    else
        m8085::ExecuteSlice(simulation.Machine, simulation.Code, instructions);
}

void RunAtFullSpeed(Simulation& simulation, std::uint64_t limit) {
    constexpr std::uint64_t slice = 1'000'000;
    while (limit > 0) {
        const std::uint64_t instructions = std::min(limit, slice);
        Execute(simulation, static_cast<int>(instructions));
        if (HasStopped(simulation)) return;
        DeferredSignals::Check();
        limit -= instructions;
    }
}

// Feeds ports, and takes down what went through them.
class PortWatch {
public:
    PortWatch(Simulation& simulation, const RunSettings& settings) : simulation_(simulation), settings_(settings) {
        for (const cases::Feed& feed : settings.Feeds) feeds_[static_cast<std::size_t>(feed.Port)] = {&feed, 0};
    }

    // The port holds the byte that IN is about to read.
    void Before(const Fetched& instruction) {
        FeedState& state = feeds_[instruction.Bytes[1]];
        if (instruction.Bytes[0] != in || state.Bytes == nullptr) return;
        const std::vector<int>& bytes = state.Bytes->Bytes;
        simulation_.Machine.Ports[instruction.Bytes[1]] = m8085::Low(bytes[std::min(state.Next++, bytes.size() - 1)]);
    }

    void After(const Fetched& instruction) {
        const bool isOut = instruction.Bytes[0] == out;
        if (!settings_.Traffic || (!isOut && instruction.Bytes[0] != in)) return;
        const m8085::MachineState& machine = simulation_.Machine;
        simulation_.TrafficIsCutOff = simulation_.Traffic.size() >= Most(settings_.MostLines);
        if (!simulation_.TrafficIsCutOff)
            simulation_.Traffic.push_back({isOut, instruction.Bytes[1], machine.Ports[instruction.Bytes[1]],
                                           instruction.Address, machine.TStates});
    }

private:
    static constexpr std::uint8_t in = 0xDB;
    static constexpr std::uint8_t out = 0xD3;

    struct FeedState {
        const cases::Feed* Bytes = nullptr;
        std::size_t Next = 0;
    };

    Simulation& simulation_;
    const RunSettings& settings_;
    std::array<FeedState, m8085::PortCount> feeds_{};
};

// Collects the lines of a trace, and hands them on in large pieces.
class Tracer {
public:
    explicit Tracer(const RunSettings& settings)
        : sink_(settings.Trace), left_(Most(settings.MostLines)), most_(left_) {}

    bool IsDone() const { return !sink_ || left_ == 0; }

    void Take(const Fetched& instruction, const m8085::MachineState& after) {
        if (IsDone()) return;
        AppendTraceLine(lines_, instruction, after);
        --left_;
        constexpr std::size_t fullBuffer = 0x10000;
        if (lines_.size() >= fullBuffer) Flush();
    }

    // Says so if instructions follow that are not in the trace.
    void Finish(bool runGoesOn) {
        if (!sink_) return;
        if (runGoesOn)
            lines_ += "The trace ends after " + std::to_string(most_) + " lines, the run goes on: see --trace-lines\n";
        Flush();
    }

private:
    void Flush() {
        sink_(lines_);
        lines_.clear();
    }

    const TraceSink& sink_;
    std::uint64_t left_;
    std::uint64_t most_;
    std::string lines_;
};

// Goes on at full speed once there is nothing to watch any more.
void RunWatched(Simulation& simulation, const RunSettings& settings) {
    std::uint64_t limit = Most(settings.Limit);
    constexpr std::uint64_t checkedEvery = 0x1000;
    m8085::MachineState& machine = simulation.Machine;
    PortWatch ports(simulation, settings);
    Tracer tracer(settings);
    bool hasStopped = false;
    bool traceIsOpen = !tracer.IsDone();
    for (; !hasStopped && limit > 0; --limit) {
        if (traceIsOpen && tracer.IsDone()) {
            tracer.Finish(true);
            traceIsOpen = false;
        }
        if (!traceIsOpen && !settings.WatchesPorts()) return RunAtFullSpeed(simulation, limit);
        const Fetched instruction = FetchAtPC(machine);
        ports.Before(instruction);
        Execute(simulation, 1);
        hasStopped = HasStopped(simulation);
        const bool isInstruction = assembler::FindInstruction(instruction.Bytes[0]) != nullptr;
        if (isInstruction && machine.Refused.Reason == m8085::Limit::None) {
            ports.After(instruction);
            tracer.Take(instruction, machine);
        }
        if (limit % checkedEvery == 0 && DeferredSignals::Arrived() != 0) break;
    }
    if (traceIsOpen) tracer.Finish(false);
    DeferredSignals::Check();
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

void Run(Simulation& simulation, const RunSettings& settings) {
    simulation.HowItEnded = Outcome::LimitReached;
    if (settings.Profile) simulation.Profile = std::make_unique<m8085::Profile>();
    if (settings.Trace || settings.WatchesPorts())
        RunWatched(simulation, settings);
    else
        RunAtFullSpeed(simulation, Most(settings.Limit));
    simulation.Message = MessageFor(simulation, settings.Limit);
    if (simulation.HowItEnded == Outcome::Ended) return;
    simulation.Line = simulation.Program.SourceLine(simulation.Code.LineAt(simulation.Machine.PC));
}

}  // namespace console
