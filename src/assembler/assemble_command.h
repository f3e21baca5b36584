#pragma once

#include "editor/program_document.h"
#include "execution/run_commands.h"
#include "machine/code_map.h"
#include "machine/machine_state.h"
#include "panels/memory_grid.h"
#include "panels/register_panel.h"
#include "platform/button.h"

namespace assembler {

// From the text in the editor to a program that can run. A success is silent: the run commands become enabled.
class AssembleCommand : public QObject {
public:
    AssembleCommand(m8085::MachineState& machineState, m8085::CodeMap& sourceLines, platform::Button& cmdCompile,
                    editor::ProgramDocument& programDocument, execution::RunCommands& run,
                    panels::RegisterPanel& registers, panels::MemoryGrid& grid);

    // The button's command, which shows the new memory in the grid.
    void cmdCompile_Click();

    // The menu's command, which leaves the grid as it is but for the cell being edited. Does nothing during a run.
    void Assemble();

private:
    bool RefuseExcessLength(std::size_t labelSplits);
    void Report(const QString& reason);

    m8085::MachineState& machine;
    m8085::CodeMap& codeMap;
    editor::ProgramDocument& document;
    execution::RunCommands& runCommands;
    panels::RegisterPanel& registerPanel;
    panels::MemoryGrid& memoryGrid;
};

}  // namespace assembler
