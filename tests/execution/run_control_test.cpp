#include "execution/run_control.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <utility>

#include "support/workbench.h"

namespace execution {

namespace {

// Records what the commands ask of the view: each call a word or a message, separated by bars.
class RunControlTest : public ::testing::Test {
protected:
    void Load(std::u16string_view source) {
        ASSERT_TRUE(bench.Assemble(source).Succeeded);
        control.SetAssembled(true);
    }

    std::string LogOf(void (RunControl::*command)()) {
        log.clear();
        (control.*command)();
        return log;
    }
    std::string Run() { return LogOf(&RunControl::RunProgram); }
    std::string SlowRun() { return LogOf(&RunControl::SlowRun); }
    std::string Step() { return LogOf(&RunControl::StepProgram); }

    void Note(const std::string& call) { log += (log.empty() ? "" : "|") + call; }

    RunView RecordingView() {
        return {.DisplayRegs = [this] { Note("regs"); },
                .RefreshRAMDisplay = [this] { Note("memory"); },
                .SelectLine = [this](int line) { Note("line " + std::to_string(line)); },
                .ClearSelection = [this] { Note("clear"); },
                .Yield =
                    [this] {
                        Note("yield");
                        if (onYield) onYield();
                    },
                .ShowEndMessage = [this](const std::string& text) { Note(text); },
                .ShowRefusal = [this](const std::string& text) { Note(text); },
                .ShowCommandState =
                    [this](CommandState state) {
                        constexpr const char* names[] = {"no program", "assembled", "running"};
                        Note(names[static_cast<int>(state)]);
                    },
                .MarkChanges = [this](const m8085::Changes& changes) { marked = changes; },
                .MarkNextAddress = [this](std::optional<std::int32_t> address) { next = address; }};
    }

    support::Workbench bench;
    m8085::MachineState& machine = bench.machine;
    std::string log;
    m8085::Changes marked;
    std::optional<std::int32_t> next;
    std::function<void()> onYield;
    RunControl control{bench.machine, bench.codeMap, RecordingView()};
};

std::string EndOf(const std::string& time, const std::string& tStates) {
    return "End of code encountered. The program would take " + time + " microsec on 8085 (" + tStates + " T-States)";
}

std::string ReportedRun(const std::string& time, const std::string& tStates) {
    return "running|yield|regs|memory|" + EndOf(time, tStates) + "|regs|clear|assembled";
}

}  // namespace

TEST_F(RunControlTest, RunReportsTheTimeAndResets) {
    Load(u"MVI A,5\r\nHLT");
    EXPECT_EQ(Run(), ReportedRun("3.9", "12"));
    EXPECT_EQ(machine.PC, 0x8000);
    EXPECT_EQ(machine.SP, 0xFFF0);
    EXPECT_EQ(machine.TStates, 0);
    EXPECT_EQ(machine.A, 5);
    EXPECT_FALSE(machine.Halted);

    machine.TStates = std::numeric_limits<std::int32_t>::max() - 2;
    const std::string limitTold = ". The T-state counter has reached its limit; the program took at least this long.";
    EXPECT_EQ(Run(), "running|yield|regs|memory|" + EndOf("697932185.275", "2147483647") + limitTold +
                         "|regs|clear|assembled");
}

TEST_F(RunControlTest, RunEndsAtAnAddressWithoutSourceLine) {
    EXPECT_EQ(Run(), ReportedRun("1.3", "4"));  // nothing was ever assembled
    Load(u"LXI H,9000\r\nPCHL");
    EXPECT_EQ(Run(), ReportedRun("5.2", "16"));
    bench = {};
    Load(u"MVI A,5");
    EXPECT_EQ(Run(), ReportedRun("2.275", "7"));
    Load(u"MVI A,5\r\nMVI B,6");
    Load(u"MVI A,5");
    EXPECT_EQ(Run(), ReportedRun("4.55", "14")) << "what an earlier, longer program left is executed too";
}

TEST_F(RunControlTest, SingleStepSelectsTheNextLineAndReportsOnThePressAfterTheEnd) {
    Load(u"; five\r\nMVI A,5\r\nHLT");
    EXPECT_EQ(Step(), "regs|memory|line 3");
    EXPECT_EQ(Step(), "regs|memory|line 3");
    EXPECT_EQ(machine.TStates, 12);
    EXPECT_EQ(Step(), EndOf("3.96", "12") + "|clear|regs");
    EXPECT_EQ(machine.PC, 0x8000);

    machine.PC = 0x8002;
    Step();
    EXPECT_EQ(Run(), "running|regs|memory|" + EndOf("1.625", "5") + "|regs|clear|assembled");
    EXPECT_FALSE(machine.Halted);
}

TEST_F(RunControlTest, SlowRunShowsEachInstructionAndEndsSilently) {
    Load(u"MVI A,5\r\nHLT");
    EXPECT_EQ(SlowRun(), "running|regs|memory|line 2|yield|regs|memory|line 2|yield|clear|assembled");
    EXPECT_EQ(machine.PC, 0x8002);
    EXPECT_EQ(Run(), ReportedRun("5.525", "17")) << "the HLT is executed once more";

    machine.Halted = true;
    EXPECT_EQ(SlowRun(), "running|clear|assembled");
    EXPECT_FALSE(machine.Halted);
}

TEST_F(RunControlTest, StopLeavesTheMachineWhereItIs) {
    Load(u"NOP\r\nNOP\r\nNOP");
    control.SetSliceLength(1);
    onYield = [this] { control.Stop(); };
    EXPECT_EQ(Run(), "running|yield|regs|memory|clear|assembled");
    EXPECT_EQ(SlowRun(), "running|regs|memory|line 3|yield|assembled");
    EXPECT_EQ(machine.PC, 0x8002);
    onYield = nullptr;
    EXPECT_EQ(Run(), ReportedRun("3.9", "12")) << "the whole time counts";

    // Stop in the very yield in which the program ends
    onYield = [this] { control.Stop(); };
    machine.PC = 0x8002;
    EXPECT_EQ(Run(), "running|yield|regs|memory|clear|assembled");
    EXPECT_EQ(machine.PC, 0x8003);
    machine.PC = 0x8001;
    machine.Memory[0x8001] = 0x76;
    EXPECT_EQ(Run(), "running|yield|regs|memory|clear|assembled");
    EXPECT_TRUE(machine.Halted);
}

TEST_F(RunControlTest, ACodeThatIsNoInstructionSpinsUntilStop) {
    Load(u"NOP\r\nNOP");
    machine.Memory[0x8001] = 0x08;
    int yields = 0;
    onYield = [&] {
        if (++yields == 4) control.Stop();
    };
    EXPECT_EQ(Run(), "running|yield|yield|yield|yield|regs|memory|clear|assembled");
    EXPECT_EQ(machine.PC, 0x8001);
    EXPECT_EQ(machine.TStates, 4);
}

TEST_F(RunControlTest, ARunSeesWhatTheUserChangesInItsYieldsButNoOtherCommand) {
    Load(u"INR A\r\nINR A\r\nINR A\r\nINR A\r\nINR A");
    control.SetSliceLength(2);
    onYield = [this] {
        machine.A = static_cast<std::uint8_t>(machine.A * 10);
        control.RunProgram();
        control.SlowRun();
        control.StepProgram();
        control.Reset();
    };
    EXPECT_EQ(Run(), "running|yield|yield|yield|regs|memory|" + EndOf("6.5", "20") + "|regs|clear|assembled");
    EXPECT_EQ(machine.A, (((2 * 10 + 2) * 10 + 1) * 10) % 256);
    machine.PC = 0x8004;
    EXPECT_EQ(SlowRun(), "running|regs|memory|line 0|yield|clear|assembled");
}

TEST_F(RunControlTest, AnEditDuringARunCostsTheProgramButNotStop) {
    Load(u"NOP\r\nNOP\r\nNOP");
    control.SetSliceLength(1);
    onYield = [this] {
        control.LoseProgram();
        EXPECT_TRUE(CanStart(Startable::DuringRun, control.State()));
        control.Stop();
    };
    EXPECT_EQ(Run(), "running|yield|regs|memory|clear|no program");
    EXPECT_EQ(SlowRun(), "running|regs|memory|line 3|yield|no program");
    onYield = nullptr;
    EXPECT_EQ(Run(), ReportedRun("3.9", "12")) << "the edit is forgotten with its run";
    control.LoseProgram();
    EXPECT_EQ(control.State(), CommandState::NoProgram);
}

TEST_F(RunControlTest, ARefusalIsShownAndTheNextCommandTriesAgain) {
    const std::string told =
        "The instruction at address 8003 (opcode C5) has no room to push two bytes on the stack: SP is 0001, at the "
        "lower end of memory. Nothing has been changed.";
    Load(u"LXI SP,1\r\nPUSH B");
    EXPECT_EQ(Run(), "running|yield|regs|memory|line 2|" + told + "|assembled");
    machine.SP = 2;
    EXPECT_EQ(Run(), ReportedRun("7.15", "22"));

    EXPECT_EQ(SlowRun(), "running|regs|memory|line 2|yield|regs|memory|line 2|" + told + "|assembled");
    EXPECT_EQ(Step(), "regs|memory|line 2|" + told);
    machine.SP = 2;
    EXPECT_EQ(Step(), "regs|memory|line 0");

    control.Reset();
    machine.PC = 0xFFFE;  // no source line there
    EXPECT_TRUE(Run().starts_with("running|yield|regs|memory|The program has come to address FFFE")) << log;
}

TEST_F(RunControlTest, WhatAStepOrARunHasChangedIsMarkedUntilSomethingElseChangesTheMachine) {
    using m8085::Registers;
    const auto markedBytes = [this] { return std::count(marked.Memory.begin(), marked.Memory.end(), true); };
    Load(u"LXI H,90FF\r\nSUB A\r\nMOV M,L\r\nOUT 7\r\nINR A\r\nOUT 7\r\nHLT");
    EXPECT_EQ(next, 0x8000);
    machine.Ports[9] = 9;
    Step();
    EXPECT_TRUE(marked.Of(&Registers::H) && marked.Of(&Registers::L) && marked.Of(&Registers::PC));
    EXPECT_FALSE(marked.Of(&Registers::A) || marked.OfFlags() || marked.Of(&Registers::SP) || markedBytes() != 0);
    Step();
    EXPECT_TRUE(marked.Of(&Registers::Z) && marked.OfFlags());
    EXPECT_FALSE(marked.Of(&Registers::A) || marked.Of(&Registers::CY)) << "the same value is no change";
    Step();
    EXPECT_TRUE(markedBytes() == 1 && marked.Memory[0x90FF]);
    EXPECT_EQ(next, 0x8005);

    // A run is marked as a whole, also behind the Reset at its end; the others' forget.
    Run();
    EXPECT_TRUE(marked.Ports[7] && marked.Of(&Registers::A) && marked.Of(&Registers::PC));
    EXPECT_FALSE(marked.Ports[9] || marked.Of(&Registers::H) || markedBytes() != 0);
    EXPECT_EQ(next, 0x8000);
    for (const auto& forget : {std::function<void()>([this] { control.Reset(); }),
                               {[this] { control.SetAssembled(true); }},
                               {[this] { control.ForgetChanges(); }}}) {
        Step();
        EXPECT_TRUE(marked.Of(&Registers::PC));
        forget();
        EXPECT_FALSE(marked.Of(&Registers::PC));
        EXPECT_EQ(next, machine.PC);
    }
    onYield = [this] {
        control.LoseProgram();
        EXPECT_EQ(next, std::nullopt);
        control.Stop();
    };
    SlowRun();
    EXPECT_TRUE(marked.Of(&Registers::PC));
    EXPECT_EQ(next, std::nullopt);
}

}  // namespace execution
