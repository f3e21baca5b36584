#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "execution/command_state.h"
#include "execution/history.h"
#include "machine/changes.h"
#include "machine/code_map.h"
#include "machine/machine_state.h"

namespace execution {

// What the run commands need from the screen. All of it is called between two instructions, never inside one. What is
// not given does nothing.
struct RunView {
    static constexpr auto Nothing = [](auto&&...) {};

    std::function<void()> DisplayRegs = Nothing;
    std::function<void()> RefreshRAMDisplay = Nothing;
    std::function<void(int line)> SelectLine = Nothing;  // a source line, counted from 1; clears the selection for 0
    std::function<void()> ClearSelection = Nothing;
    std::function<void()> Yield = Nothing;  // handles pending events; any handler may run inside
    std::function<void(const std::string& text)> ShowEndMessage = Nothing;
    std::function<void(const std::string& text)> ShowRefusal = Nothing;
    std::function<void(CommandState)> ShowCommandState = Nothing;
    std::function<void(const m8085::Changes& changes)> MarkChanges = Nothing;            // marks what has changed
    std::function<void(std::optional<std::int32_t> address)> MarkNextAddress = Nothing;  // and the next instruction

    // A run of the assembled text has come from the beginning of the program to its end: the machine as it was before
    // and after. ForgetOutcome comes before the next run, unless an assembly has come between.
    std::function<void(const m8085::MachineState& before, const m8085::MachineState& after)> ShowOutcome = Nothing;
    std::function<void()> ForgetOutcome = Nothing;
};

// The execution commands: Run, Slow Run, Single Step, Stop and Reset. While a run is under way its other commands do
// nothing, so that no run nests in another and no step comes between.
class RunControl {
public:
    // Instructions of full-speed running between two looks at the event queue: well under a millisecond's work.
    static constexpr int DefaultSliceLength = 100'000;

    RunControl(m8085::MachineState& machine, m8085::CodeMap& codeMap, RunView view);

    // Runs at full speed until HLT, an address with no source line, a marked line, Stop or a refusal. Yields after each
    // slice.
    void RunProgram();

    // Runs with every instruction shown. Ends at a marked line, too.
    void SlowRun();

    // One instruction, or the end message where the last step found the program's end.
    void StepProgram();

    // Takes back the latest step, or the whole of the latest run, with the Reset at its end, and again the one before
    // it. What has changed nothing, as where an instruction was refused, is not among them. Nothing happens during a
    // run, and where there is nothing left.
    void StepBack();

    // Asks the run that is under way to end after its instruction. Without one it does nothing.
    void Stop();

    // Does nothing during a run.
    void Reset();

    // The program text is no longer what was assembled. A run goes on and stays stoppable, but leads to no program when
    // it ends. Until the next assembly no command selects a line or clears the selection: the code map knows nothing
    // of this text, and what is selected in it is the user's own.
    void LoseText();

    // The same, but that it is the memory that no longer holds the program.
    void LoseProgram();

    // The outcome of an assembly, and of one that succeeded the addresses of its instructions, in ascending order.
    void SetAssembled(bool success, std::vector<std::int32_t> instructions = {});

    // The marked lines, at which runs stop before the instruction: numbers, counted from 1, in the text that was
    // assembled last. A line without an instruction stands for the next one that has one.
    void SetMarkedLines(std::vector<int> lines);

    // What the latest step or run has changed is marked until the next one. This removes the marks.
    void ForgetChanges();

    // Something else has changed the machine: removes the marks, and no step and no run before now can be taken back,
    // nor the run that is under way.
    void NoteOtherChange();

    // Shows a line of the text, counted from 1. Line 0, that of an address with no instruction, halts the machine.
    void GotoLine(int line);

    bool IsRunning() const { return state_ == CommandState::Running; }

    // At least 1.
    void SetSliceLength(int instructions) { sliceLength_ = instructions; }

private:
    void StartRun();
    void EndRun();
    void Enter(CommandState newState);
    void ExecuteAndShow();
    void ShowMachine();
    bool HasChanged() const;
    void MarkChanges();
    void DisplayMachine();
    void ShowNextLine();
    void SelectLine(int line);
    void UpdateStops();
    bool IsAtMark() const;
    void ClearSelection();
    void MarkNextAddress();
    bool WasRefused() const;
    void ReportRefusal();
    void ResetMachine();
    void ShowOutcome();

    m8085::MachineState& machine_;
    m8085::CodeMap& codeMap_;
    RunView view_;
    std::vector<std::int32_t> instructions_;  // of the program that is assembled
    std::vector<int> markedLines_;
    m8085::MachineState before_;  // at the start of the step or run whose changes are marked next
    Shown shown_;
    History history_;
    std::unique_ptr<m8085::MachineState> beginning_;  // of a run that has begun with the program
    bool canTakeRunBack_ = false;                     // nothing else has changed the machine since it began
    CommandState state_ = CommandState::NoProgram;
    int sliceLength_ = DefaultSliceLength;
    bool StopRequested = false;
    bool isOutcomeShown_ = false;   // of the latest assembly
    bool programLost_ = false;      // during the run that is under way
    bool textIsAssembled_ = false;  // that is in the editor now
    bool programStands_ = false;    // in memory, as the text says it
};

}  // namespace execution
