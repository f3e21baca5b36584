#pragma once

#include "editor/program_document.h"
#include "execution/command_buttons.h"
#include "execution/run_control.h"
#include "panels/memory_grid.h"
#include "panels/register_panel.h"

namespace execution {

// Run, Slow Run, Single Step, Stop and Reset in the window.
class RunCommands : public QObject {
public:
    RunCommands(m8085::MachineState& machine, const m8085::CodeMap& codeMap, CommandButtons& commandButtons,
                editor::ProgramDocument& document, panels::RegisterPanel& registerPanel,
                panels::MemoryGrid& memoryGrid);

    void RunProgram() { control.RunProgram(); }
    void cmdSlowRun_Click() { control.SlowRun(); }
    void StepProgram() { control.StepProgram(); }
    void cmdHalt_Click() { control.Stop(); }
    void cmdReset_Click() { control.Reset(); }

    void GotoLine(int line) { control.GotoLine(line); }
    bool IsRunning() const { return control.IsRunning(); }
    void SetAssembled(bool success) { control.SetAssembled(success); }
    void LoseProgram() { control.LoseProgram(); }

private:
    RunControl control;
};

}  // namespace execution
