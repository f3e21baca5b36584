#pragma once

#include "commands/command_buttons.h"
#include "editor/program_document.h"
#include "execution/run_control.h"
#include "panels/memory_grid.h"
#include "panels/register_panel.h"

namespace commands {

// What the run commands show, and where: the panels, the editor, message boxes and the buttons of the window.
execution::RunView ViewOn(CommandButtons& buttons, editor::ProgramDocument& document,
                          panels::RegisterPanel& registerPanel, panels::MemoryGrid& memoryGrid);

}  // namespace commands
