#pragma once

#include "editor/program_document.h"
#include "machine/machine_state.h"

namespace commands {

// Shows beside the comments of the program whether they held in a run from its beginning to its end: with the machine
// as it was before the first instruction and after the last one. What did not hold is scrolled into view.
void ShowVerdicts(editor::ProgramDocument& document, const m8085::MachineState& before,
                  const m8085::MachineState& after);

}  // namespace commands
