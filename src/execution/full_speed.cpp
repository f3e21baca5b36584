#include "execution/full_speed.h"

#include "machine/instruction_cycle.h"

namespace execution {

using m8085::Registers;

[[gnu::flatten]] void ExecuteSlice(m8085::MachineState& machine, const m8085::CodeMap& codeMap, int instructions) {
    if (!machine.CanFetch()) return machine.ExecuteInstruction();

    m8085::Processor<m8085::Storage::Borrowed> working{Registers{machine}, machine.Memory, machine.Ports,
                                                       machine.Refused};
    do {
        if (!working.Execute()) break;
    } while (working.CanFetch() && codeMap.LineAt(working.PC) != 0 && --instructions != 0);
    static_cast<Registers&>(machine) = working;
}

}  // namespace execution
