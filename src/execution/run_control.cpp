#include "execution/run_control.h"

#include <utility>

#include "execution/messages.h"
#include "execution/stop_addresses.h"
#include "machine/full_speed.h"

namespace execution {

RunControl::RunControl(m8085::MachineState& machine, m8085::CodeMap& codeMap, RunView view)
    : machine_(machine), codeMap_(codeMap), view_(std::move(view)) {}

// The first instruction is executed whatever the code map says about it, so that a run goes on from a marked line;
// after that an address with no source line ends the run, and a mark stops it. If Stop comes in the same yield in which
// the program ends, Stop decides.
void RunControl::RunProgram() {
    if (IsRunning()) return;
    StartRun();
    before_ = machine_;
    const Shown shownBefore = shown_;
    while (!machine_.Halted && !StopRequested) {
        ExecuteSlice(machine_, codeMap_, sliceLength_);
        view_.Yield();
        if (WasRefused() || IsAtMark() || codeMap_.LineAt(machine_.PC) == 0) break;
    }
    ShowMachine();
    if (canTakeRunBack_ && (HasChanged() || !WasRefused())) history_.Add({shown_.Made, shownBefore, true});
    if (WasRefused()) {
        ReportRefusal();
    } else if (IsAtMark() && !StopRequested) {
        ShowNextLine();
    } else {
        if (!StopRequested) {
            ShowOutcome();
            view_.ShowEndMessage(EndMessage(machine_.TStates, RunMicroseconds));
            ResetMachine();
        }
        ClearSelection();
    }
    EndRun();
}

// Ends silently, with the machine as the program left it.
void RunControl::SlowRun() {
    if (IsRunning()) return;
    StartRun();
    while (true) {
        if (machine_.Halted) {
            ShowOutcome();
            ClearSelection();
            machine_.Halted = false;
            break;
        }
        if (StopRequested) break;
        ExecuteAndShow();
        if (WasRefused()) break;
        view_.Yield();
        if (IsAtMark()) break;
    }
    EndRun();
}

void RunControl::StepProgram() {
    if (IsRunning()) return;
    if (machine_.Halted) {
        history_.Add({std::make_shared<m8085::Difference>(m8085::Difference{machine_}), shown_});
        view_.ShowEndMessage(EndMessage(machine_.TStates, SingleStepMicroseconds));
        ClearSelection();
        ResetMachine();
        return;
    }
    machine_.Refused = {};
    ExecuteAndShow();
}

void RunControl::StepBack() {
    if (IsRunning() || history_.IsEmpty()) return;
    const Done done = history_.TakeLast();
    m8085::TakeBack(*done.Made, machine_);
    machine_.Refused = {};
    shown_.Made = done.Before.Made;
    shown_.After = done.Before.After;
    MarkChanges();
    DisplayMachine();
    if (textIsAssembled_) SelectLine(done.Before.Line);
}

void RunControl::Stop() {
    StopRequested = true;
}

void RunControl::Reset() {
    if (IsRunning()) return;
    NoteOtherChange();
    ResetMachine();
}

void RunControl::LoseText() {
    textIsAssembled_ = false;
    shown_.Line = 0;
    LoseProgram();
}

void RunControl::LoseProgram() {
    programStands_ = false;
    if (IsRunning()) {
        programLost_ = true;
        MarkNextAddress();
    } else {
        Enter(CommandState::NoProgram);
    }
}

void RunControl::SetAssembled(bool success, std::vector<std::int32_t> instructions) {
    NoteOtherChange();
    instructions_ = std::move(instructions);
    UpdateStops();
    isOutcomeShown_ = false;
    textIsAssembled_ = success;
    programStands_ = success;
    Enter(success ? CommandState::ProgramAssembled : CommandState::NoProgram);
}

void RunControl::SetMarkedLines(std::vector<int> lines) {
    markedLines_ = std::move(lines);
    UpdateStops();
}

void RunControl::UpdateStops() {
    codeMap_.SetStops(StopAddresses(markedLines_, instructions_, codeMap_));
}

// A machine that has halted has executed the HLT, and is not before it.
bool RunControl::IsAtMark() const {
    return codeMap_.StopsAt(machine_.PC) && !machine_.Halted;
}

void RunControl::StartRun() {
    StopRequested = false;
    programLost_ = false;
    canTakeRunBack_ = true;
    machine_.Refused = {};
    const bool isAtBeginning = machine_.PC == m8085::ProgramOrigin && machine_.TStates == 0;
    beginning_ = programStands_ && isAtBeginning ? std::make_unique<m8085::MachineState>(machine_) : nullptr;
    if (std::exchange(isOutcomeShown_, false)) view_.ForgetOutcome();
    Enter(CommandState::Running);
}

void RunControl::ShowOutcome() {
    if (!beginning_ || !programStands_) return;
    isOutcomeShown_ = true;
    view_.ShowOutcome(*beginning_, machine_);
}

void RunControl::EndRun() {
    Enter(programLost_ ? CommandState::NoProgram : CommandState::ProgramAssembled);
}

void RunControl::Enter(CommandState newState) {
    state_ = newState;
    view_.ShowCommandState(state_);
    MarkNextAddress();
}

void RunControl::GotoLine(int line) {
    if (line == 0) machine_.Halted = true;
    SelectLine(line);
}

void RunControl::ShowNextLine() {
    const int line = codeMap_.LineAt(machine_.PC);
    if (textIsAssembled_)
        GotoLine(line);
    else if (line == 0)
        machine_.Halted = true;
}

void RunControl::ExecuteAndShow() {
    before_ = machine_;
    const Shown shownBefore = shown_;
    machine_.ExecuteInstruction();
    ShowMachine();
    if (HasChanged()) history_.Add({shown_.Made, shownBefore});
    if (WasRefused())
        ReportRefusal();
    else
        ShowNextLine();
}

void RunControl::SelectLine(int line) {
    shown_.Line = line;
    view_.SelectLine(line);
}

void RunControl::ClearSelection() {
    if (!textIsAssembled_) return;
    shown_.Line = 0;
    view_.ClearSelection();
}

void RunControl::ForgetChanges() {
    shown_.Made = nullptr;
    MarkChanges();
}

void RunControl::NoteOtherChange() {
    history_.Clear();
    canTakeRunBack_ = false;
    ForgetChanges();
}

void RunControl::ShowMachine() {
    shown_.Made = std::make_shared<m8085::Difference>(DifferenceBetween(before_, machine_));
    shown_.After = machine_;
    MarkChanges();
    DisplayMachine();
}

// Since the moment from which changes are marked.
bool RunControl::HasChanged() const {
    return !shown_.Made->Bytes.empty() || shown_.Made->Before != shown_.After;
}

void RunControl::MarkChanges() {
    view_.MarkChanges(shown_.Made ? ChangesIn(*shown_.Made, shown_.After) : m8085::Changes());
}

void RunControl::DisplayMachine() {
    view_.DisplayRegs();
    view_.RefreshRAMDisplay();
    MarkNextAddress();
}

// The program is assembled while it can be run, and while it runs as long as it is still what the text says.
void RunControl::MarkNextAddress() {
    const bool isAssembled = state_ == CommandState::ProgramAssembled || (IsRunning() && !programLost_);
    view_.MarkNextAddress(isAssembled ? std::optional(machine_.PC) : std::nullopt);
}

bool RunControl::WasRefused() const {
    return machine_.Refused.Reason != m8085::Limit::None;
}

// The machine stays as it is, so that the user can look; the next command tries again from here.
void RunControl::ReportRefusal() {
    const int line = codeMap_.LineAt(machine_.PC);
    if (line != 0 && textIsAssembled_) SelectLine(line);
    view_.ShowRefusal(RefusalMessage(machine_.Refused));
}

// The step or run that ends with it is marked by the values after the Reset.
void RunControl::ResetMachine() {
    SetToProgramStart(machine_);
    if (shown_.Made) {
        shown_.After = machine_;
        MarkChanges();
    }
    view_.DisplayRegs();
    MarkNextAddress();
    machine_.Halted = false;
}

}  // namespace execution
