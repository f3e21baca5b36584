#include "machine/machine_state.h"

#include "machine/instruction_cycle.h"

namespace m8085 {

void MachineState::ExecuteInstruction() {
    if (CanFetch())
        Execute();
    else
        Refuse(Limit::Fetch, PC);
}

}  // namespace m8085
