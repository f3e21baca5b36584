#include "machine/full_speed.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "machine/instruction_cycle.h"

namespace m8085 {

namespace {

// Executes the instruction at PC and those that follow it, as many as `instructions` says. What the compiler is to keep
// in the host's registers goes from handler to handler; all else is in the machine. Returns whether all of them were
// executed and a run continues after them. For one instruction alone the code map may be missing; the answer is then
// no.
using Handler = bool (*)(MachineState& machine, const CodeMap* codeMap, std::int32_t pc, std::int32_t tStates,
                         int instructions);

// For each opcode the one that is made from its statement.
extern const std::array<Handler, 256> handlers;

// Takes PC and the T-states back into the machine. Not inline: that would cost each handler some of its registers.
[[gnu::noinline]] bool EndBurst(MachineState& machine, const CodeMap* codeMap, std::int32_t pc, std::int32_t tStates,
                                int instructionsLeft) {
    machine.PC = pc;
    machine.Charge(tStates);
    return instructionsLeft == 0 && codeMap != nullptr && codeMap->RunGoesOnAt(pc);
}

template <std::uint8_t Opcode>
bool Execute(MachineState& machine, const CodeMap* codeMap, std::int32_t pc, std::int32_t tStates, int instructions) {
    InstructionCycle cycle(machine, pc, tStates);
    if (!cycle.Execute<Opcode>() || --instructions == 0 || !codeMap->RunGoesOnAt(cycle.PC())) [[unlikely]]
        return EndBurst(machine, codeMap, cycle.PC(), cycle.TStates(), instructions);
    return handlers[cycle.FetchOpcode()](machine, codeMap, cycle.PC(), cycle.TStates(), instructions);
}

template <std::size_t... Opcodes>
constexpr std::array<Handler, 256> HandlersOf(std::index_sequence<Opcodes...>) {
    return {Execute<std::uint8_t{Opcodes}>...};
}

constexpr std::array<Handler, 256> handlers = HandlersOf(std::make_index_sequence<256>());

bool ExecuteBurst(MachineState& machine, const CodeMap* codeMap, int instructions) {
    if (!machine.CanFetch()) {
        machine.Refused = {.Reason = Limit::Fetch, .PC = machine.PC, .Operand = machine.PC};
        return false;
    }
    const Handler first = handlers[machine.Memory[Index(machine.PC)]];
    return first(machine, codeMap, machine.PC, 0, instructions);
}

}  // namespace

void MachineState::ExecuteInstruction() {
    ExecuteBurst(*this, nullptr, 1);
}

void ExecuteSlice(MachineState& machine, const CodeMap& codeMap, int instructions) {
    // The compiler makes jumps of the handlers' calls where it optimizes. Where it does not, so many fit on the stack.
    constexpr int longestBurst = 1000;
    int burst = 0;
    do {
        burst = std::min(instructions, longestBurst);
        instructions -= burst;
    } while (ExecuteBurst(machine, &codeMap, burst) && instructions != 0);
}

}  // namespace m8085
