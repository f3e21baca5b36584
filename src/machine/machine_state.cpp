#include "machine/machine_state.h"

#include "machine/instruction_cycle.h"

namespace m8085 {

void MachineState::ExecuteInstruction() {
    Execute();
}

}  // namespace m8085
