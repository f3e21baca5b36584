#include "machine/full_speed.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <type_traits>
#include <utility>

#include "machine/instruction_cycle.h"

namespace m8085 {

namespace {

// The code map of a run that is profiled.
struct ProfiledMap {
    const CodeMap& Code;
    Profile& Counts;

    bool RunGoesOnAt(std::int32_t pc) const { return Code.RunGoesOnAt(pc); }

    // What took no T-states was not executed.
    void Count(std::int32_t pc, std::int32_t tStates) const {
        if (tStates == 0) return;
        Profile::Use& use = Counts.ByAddress[Index(pc)];
        ++use.Times;
        use.TStates += static_cast<std::uint64_t>(tStates);
    }
};

// Executes the instruction at PC and those that follow it, as many as `instructions` says. What the compiler is to keep
// in the host's registers goes from handler to handler; all else is in the machine. Returns whether all of them were
// executed and a run continues after them. For one instruction alone the code map may be missing; the answer is then
// no.
template <class Map>
using Handler = bool (*)(MachineState& machine, const Map* codeMap, std::int32_t pc, std::int32_t tStates,
                         int instructions);

// For each opcode the one that is made from its statement.
template <class Map>
struct Handlers {
    static const std::array<Handler<Map>, 256> ByOpcode;
};

// Takes PC and the T-states back into the machine. Not inline: that would cost each handler some of its registers.
template <class Map>
[[gnu::noinline]] bool EndBurst(MachineState& machine, const Map* codeMap, std::int32_t pc, std::int32_t tStates,
                                int instructionsLeft) {
    machine.PC = pc;
    machine.Charge(tStates);
    return instructionsLeft == 0 && codeMap != nullptr && codeMap->RunGoesOnAt(pc);
}

template <std::uint8_t Opcode, class Map>
bool Execute(MachineState& machine, const Map* codeMap, std::int32_t pc, std::int32_t tStates, int instructions) {
    InstructionCycle cycle(machine, pc, tStates);
    const bool goesOn = cycle.Execute<Opcode>();
    if constexpr (std::is_same_v<Map, ProfiledMap>) codeMap->Count(pc, cycle.TStates() - tStates);
    if (!goesOn || --instructions == 0 || !codeMap->RunGoesOnAt(cycle.PC())) [[unlikely]]
        return EndBurst(machine, codeMap, cycle.PC(), cycle.TStates(), instructions);
    return Handlers<Map>::ByOpcode[cycle.FetchOpcode()](machine, codeMap, cycle.PC(), cycle.TStates(), instructions);
}

template <class Map, std::size_t... Opcodes>
constexpr std::array<Handler<Map>, 256> HandlersOf(std::index_sequence<Opcodes...>) {
    return {Execute<std::uint8_t{Opcodes}, Map>...};
}

template <class Map>
constinit const std::array<Handler<Map>, 256> Handlers<Map>::ByOpcode =
    HandlersOf<Map>(std::make_index_sequence<256>());

template <class Map>
bool ExecuteBurst(MachineState& machine, const Map* codeMap, int instructions) {
    if (!machine.CanFetch()) {
        machine.Refused = {.Reason = Limit::Fetch, .PC = machine.PC, .Operand = machine.PC};
        return false;
    }
    const Handler<Map> first = Handlers<Map>::ByOpcode[machine.Memory[Index(machine.PC)]];
    return first(machine, codeMap, machine.PC, 0, instructions);
}

template <class Map>
void ExecuteBursts(MachineState& machine, const Map& codeMap, int instructions) {
    // The compiler makes jumps of the handlers' calls where it optimizes. Where it does not, so many fit on the stack.
    constexpr int longestBurst = 1000;
    int burst = 0;
    do {
        burst = std::min(instructions, longestBurst);
        instructions -= burst;
    } while (ExecuteBurst(machine, &codeMap, burst) && instructions != 0);
}

}  // namespace

void MachineState::ExecuteInstruction() {
    ExecuteBurst<CodeMap>(*this, nullptr, 1);
}

void ExecuteSlice(MachineState& machine, const CodeMap& codeMap, int instructions) {
    ExecuteBursts(machine, codeMap, instructions);
}

void ExecuteSlice(MachineState& machine, const CodeMap& codeMap, Profile& profile, int instructions) {
    ExecuteBursts(machine, ProfiledMap{codeMap, profile}, instructions);
}

}  // namespace m8085
