#include "execution/run_control.h"

#include <utility>

#include "execution/messages.h"
#include "machine/full_speed.h"

namespace execution {

RunControl::RunControl(m8085::MachineState& machineState, const m8085::CodeMap& sourceLines, RunView runView)
    : machine(machineState), codeMap(sourceLines), view(std::move(runView)) {}

// The first instruction is executed whatever the code map says of it; after that an address with no source line ends
// the run. Where Stop comes in the very yield in which the program ends, Stop decides.
void RunControl::RunProgram() {
    if (IsRunning()) return;
    StartRun();
    while (!machine.Halted && !StopRequested) {
        ExecuteSlice(machine, codeMap, sliceLength);
        view.Yield();
        if (WasRefused() || codeMap.LineAt(machine.PC) == 0) break;
    }
    ShowMachine();
    if (WasRefused()) {
        ReportRefusal();
    } else {
        if (!StopRequested) {
            view.ShowEndMessage(EndMessage(machine.TStates, RunMicroseconds));
            ResetMachine();
        }
        view.ClearSelection();
    }
    EndRun();
}

// Ends silently, with the machine as the program left it.
void RunControl::SlowRun() {
    if (IsRunning()) return;
    StartRun();
    while (true) {
        if (machine.Halted) {
            view.ClearSelection();
            machine.Halted = false;
            break;
        }
        if (StopRequested) break;
        machine.ExecuteInstruction();
        ShowMachine();
        if (WasRefused()) {
            ReportRefusal();
            break;
        }
        GotoLine(codeMap.LineAt(machine.PC));
        view.Yield();
    }
    EndRun();
}

void RunControl::StepProgram() {
    if (IsRunning()) return;
    if (machine.Halted) {
        view.ShowEndMessage(EndMessage(machine.TStates, SingleStepMicroseconds));
        view.ClearSelection();
        ResetMachine();
        return;
    }
    machine.Refused = {};
    machine.ExecuteInstruction();
    ShowMachine();
    if (WasRefused())
        ReportRefusal();
    else
        GotoLine(codeMap.LineAt(machine.PC));
}

void RunControl::Stop() {
    StopRequested = true;
}

void RunControl::Reset() {
    if (IsRunning()) return;
    ResetMachine();
}

void RunControl::LoseProgram() {
    if (IsRunning())
        programLost = true;
    else
        Enter(CommandState::NoProgram);
}

void RunControl::SetAssembled(bool success) {
    Enter(success ? CommandState::ProgramAssembled : CommandState::NoProgram);
}

void RunControl::StartRun() {
    StopRequested = false;
    programLost = false;
    machine.Refused = {};
    Enter(CommandState::Running);
}

void RunControl::EndRun() {
    Enter(programLost ? CommandState::NoProgram : CommandState::ProgramAssembled);
}

void RunControl::Enter(CommandState newState) {
    state = newState;
    view.ShowCommandState(state);
}

void RunControl::GotoLine(int line) {
    if (line == 0) machine.Halted = true;
    view.GotoLine(line);
}

void RunControl::ShowMachine() {
    view.DisplayRegs();
    view.RefreshRAMDisplay();
}

bool RunControl::WasRefused() const {
    return machine.Refused.Reason != m8085::Limit::None;
}

// The machine stays as it is, so that the user can look; the next command tries again from here.
void RunControl::ReportRefusal() {
    const int line = codeMap.LineAt(machine.PC);
    if (line != 0) view.GotoLine(line);
    view.ShowRefusal(RefusalMessage(machine.Refused));
}

void RunControl::ResetMachine() {
    SetToProgramStart(machine);
    view.DisplayRegs();
    machine.Halted = false;
}

}  // namespace execution
