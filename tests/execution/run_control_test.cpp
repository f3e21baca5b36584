#include "execution/run_control.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <tuple>
#include <utility>

#include "support/test_rig.h"

namespace execution {

class RunControlTest : public ::testing::Test {
protected:
    void Load(std::u16string_view source) {
        const auto assembly = rig.Assemble(source);
        ASSERT_TRUE(assembly.Succeeded);
        control.SetAssembled(true, assembly.Instructions);
    }

    // Each of these gives what the user was told, or nothing.
    std::string Told(void (RunControl::*command)()) {
        told.clear();
        yields = 0;
        if (!machine.Halted) shownPC = unseen;
        (control.*command)();
        return told;
    }
    std::string Run() { return Told(&RunControl::RunProgram); }
    std::string SlowRun() { return Told(&RunControl::SlowRun); }
    std::string Step() { return Told(&RunControl::StepProgram); }

    // What Step Back must bring back.
    auto Look() const { return std::tuple(machine, line, marked.Before, marked.After, marked.Memory, marked.Ports); }
    int StepsBack() {
        int steps = -1;
        for (m8085::MachineState before; steps < 0 || !(machine == before); ++steps) {
            before = machine;
            control.StepBack();
        }
        return steps;
    }

    RunView View() {
        RunView view;
        view.DisplayRegs = [this] { shownPC = machine.PC; };
        view.SelectLine = [this](int newLine) { line = newLine; };
        view.ClearSelection = [this] { line = 0; };
        view.Yield = [this] {
            ++yields;
            shownPC = unseen;
            if (onYield) onYield();
        };
        view.ShowEndMessage = view.ShowRefusal = [this](const std::string& text) {
            told += text;
            lineWhenTold = line;
            EXPECT_EQ(shownPC, machine.PC) << "what is told is already seen";
        };
        view.MarkChanges = [this](const m8085::Changes& changes) { marked = changes; };
        view.MarkNextAddress = [this](std::optional<std::int32_t> address) { next = address; };
        view.ShowOutcome = [this](const m8085::MachineState& before, const m8085::MachineState& after) {
            outcome =
                std::to_string(before.A) + " to " + std::to_string(after.A) + ", " + std::to_string(after.TStates);
        };
        view.ForgetOutcome = [this] { outcome.clear(); };
        return view;
    }

    support::TestRig rig;
    m8085::MachineState& machine = rig.machine;
    std::string told;
    int line = 0;  // selected
    int lineWhenTold = 0;
    static constexpr std::int32_t unseen = -1;
    std::int32_t shownPC = unseen;
    int yields = 0;
    m8085::Changes marked;
    std::optional<std::int32_t> next;
    std::string outcome;
    std::function<void()> onYield;
    RunControl control{rig.machine, rig.codeMap, View()};
};

namespace {

std::string EndOf(const std::string& time, const std::string& tStates) {
    return "End of code encountered. The program would take " + time + " microsec on 8085 (" + tStates + " T-States)";
}

}  // namespace

TEST_F(RunControlTest, RunReportsTheTimeAndResets) {
    Load(u"MVI A,5\r\nHLT");
    for (int run = 0; run < 2; ++run) EXPECT_EQ(Run(), EndOf("3.9", "12"));
    machine.TStates = std::numeric_limits<std::int32_t>::max() - 2;
    EXPECT_EQ(Run(), EndOf("697932185.275", "2147483647") +
                         ". The T-state counter has reached its limit; the program took at least this long.");
}

TEST_F(RunControlTest, RunEndsAtAnAddressWithoutSourceLine) {
    for (int run = 0; run < 2; ++run) EXPECT_EQ(Run(), EndOf("1.3", "4")) << "nothing was ever assembled";
    EXPECT_EQ(outcome, "");
    Load(u"LXI H,9000\r\nPCHL");
    EXPECT_EQ(Run(), EndOf("5.2", "16"));
    rig = {};
    Load(u"MVI A,5");
    EXPECT_EQ(Run(), EndOf("2.275", "7"));
    Load(u"MVI A,5\r\nMVI B,6");
    control.SetMarkedLines({2});
    Load(u"MVI A,5\r\n; end");
    EXPECT_EQ(Run(), EndOf("4.55", "14")) << "what an earlier, longer program left is executed too, and stops nowhere";
}

TEST_F(RunControlTest, StepsReportTheEndOnThePressAfterItAndARunReportsItAtOnce) {
    Load(u"; five\r\nMVI A,5\r\nHLT");
    for (int press = 0; press < 2; ++press) EXPECT_EQ(Step(), "");
    EXPECT_EQ(line, 3);
    EXPECT_EQ(Step(), EndOf("3.96", "12"));
    EXPECT_EQ(machine.PC, 0x8000);

    machine.PC = 0x8002;
    Step();
    EXPECT_EQ(Run(), EndOf("1.625", "5"));
    EXPECT_FALSE(machine.Halted);
}

TEST_F(RunControlTest, SlowRunEndsSilentlyWhereTheProgramLeftTheMachine) {
    Load(u"MVI A,5\r\nHLT");
    EXPECT_EQ(SlowRun(), "");
    EXPECT_EQ(yields, 2);
    EXPECT_EQ(line, 0);
    EXPECT_EQ(Run(), EndOf("5.525", "17")) << "the HLT is executed once more";

    machine.Halted = true;
    EXPECT_EQ(SlowRun(), "");
    EXPECT_EQ(yields, 0);
    EXPECT_FALSE(machine.Halted);
}

TEST_F(RunControlTest, InATextThatIsNotTheOneAssembledNothingIsSelectedAndNoSelectionIsCleared) {
    Load(u"NOP\r\nNOP\r\nLXI SP,1\r\nPUSH B");
    constexpr int usersOwn = -1;
    onYield = [this] {
        control.LoseText();
        line = usersOwn;
    };
    SlowRun();
    EXPECT_EQ(line, usersOwn);
    onYield = nullptr;
    for (const bool hasFailed : {false, true}) {
        if (hasFailed) control.SetAssembled(false);
        control.Reset();
        Step();
        Run();
        machine.PC = 0x9000;
        for (int press = 0; press < 2; ++press) Step();
        EXPECT_EQ(line, usersOwn);
        control.SetAssembled(true);
        Step();
        EXPECT_EQ(std::exchange(line, usersOwn), 2);
    }
}

TEST_F(RunControlTest, StopLeavesTheMachineWhereItIs) {
    Load(u"NOP\r\nNOP\r\nNOP");
    control.SetSliceLength(1);
    onYield = [this] { control.Stop(); };
    EXPECT_EQ(Run(), "");
    EXPECT_EQ(SlowRun(), "");
    EXPECT_EQ(line, 3);
    onYield = nullptr;
    EXPECT_EQ(Run(), EndOf("3.9", "12")) << "the whole time counts";

    // Stop in the very yield in which the program ends
    onYield = [this] { control.Stop(); };
    machine.PC = 0x8002;
    EXPECT_EQ(Run(), "");
    EXPECT_EQ(machine.PC, 0x8003);
    machine.PC = 0x8001;
    machine.Memory[0x8001] = 0x76;
    EXPECT_EQ(Run(), "");
    EXPECT_TRUE(machine.Halted);
}

TEST_F(RunControlTest, RunsStopBeforeTheInstructionOfAMarkedLineAndGoOnFromThere) {
    const auto nowAt = [this](const std::string& said) {
        return said + std::to_string(line) + (machine.Halted ? "H" : "");
    };
    control.SetMarkedLines({1, 4, 99});  // a comment, a label, and beyond the end
    Load(u"; three rounds\r\nmvi b,3\r\nagain:\r\n; count\r\ndcr b\r\njnz again\r\nhlt");
    for (const int length : {1, 2, 3, 100}) {  // in instructions; where a slice ends right before the mark, too
        control.SetSliceLength(length);
        for (int round = 0; round < 3; ++round) EXPECT_EQ(nowAt(Run()), "5") << length;
        EXPECT_EQ(machine.B, 1);
        EXPECT_EQ(nowAt(Run()), EndOf("16.575", "51") + "0");
    }
    for (int round = 0; round < 3; ++round) EXPECT_EQ(nowAt(SlowRun()), "5");
    EXPECT_EQ(yields, 2);

    // A mark on the HLT does not hide the program's end, and that of another line may come and go in a run.
    control.SetMarkedLines({7});
    control.SetSliceLength(1);
    EXPECT_EQ(nowAt(Run()), "7");
    EXPECT_EQ(nowAt(SlowRun()), "0");
    EXPECT_EQ(nowAt(Run()), EndOf("18.2", "56") + "0");
    onYield = [this] { control.SetMarkedLines({yields == 2 ? 6 : 7}); };
    EXPECT_EQ(nowAt(Run()), "6");
    EXPECT_EQ(yields, 2);

    // Stop decides, a changed text is left alone, and what has not been assembled stops nothing.
    onYield = [this] { control.Stop(); };
    EXPECT_EQ(nowAt(Run()), "0");
    onYield = [this] { control.LoseText(); };
    line = -1;
    control.SetMarkedLines({6});
    EXPECT_EQ(nowAt(Run()), "-1");
    EXPECT_EQ(nowAt(SlowRun()), "-1");
    control.SetAssembled(false);
    EXPECT_EQ(Run(), EndOf("16.575", "51"));
}

TEST_F(RunControlTest, ARunOfTheAssembledTextFromItsBeginningToItsEndHasAnOutcome) {
    constexpr std::u16string_view program = u"inr a\r\ninr a\r\nhlt";
    Load(program);
    Run();
    EXPECT_EQ(outcome, "0 to 2, 13") << "as it was before the Reset";
    Step();
    EXPECT_EQ(outcome, "0 to 2, 13");
    control.Reset();
    SlowRun();
    EXPECT_EQ(outcome, "3 to 5, 13");
    const std::function<void()> others[] = {
        [this] { Step(); },
        [this] { machine.TStates = 4; },
        [this] { machine.PC = 0x8001; },
        [this] { control.SetMarkedLines({2}); },
        [this] { onYield = [this] { control.Stop(); }; },
        [this] { onYield = [this] { control.LoseProgram(); }; },
        [this] { control.LoseProgram(); },
        [this] { machine.Memory[0x8001] = 0xF1, machine.SP = 0xFFFF; },  // POP, which is refused
    };
    for (const auto command : {&RunControl::RunProgram, &RunControl::SlowRun})
        for (const auto& prepare : others) {
            control.SetMarkedLines({});
            onYield = nullptr;
            Load(program);
            Run();
            EXPECT_NE(outcome, "");
            prepare();
            Told(command);
            EXPECT_EQ(outcome, "") << &prepare - others;
        }
    for (const bool isAssembledAnew : {false, true}) {
        Load(program);
        Run();
        isAssembledAnew ? control.SetAssembled(false) : control.LoseText();
        outcome = "what stands there";
        Run();
        EXPECT_EQ(outcome, isAssembledAnew ? "what stands there" : "") << "it may be why the assembly failed";
    }
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
    EXPECT_EQ(Run(), EndOf("6.5", "20"));
    EXPECT_EQ(yields, 3);
    EXPECT_EQ(machine.A, (((2 * 10 + 2) * 10 + 1) * 10) % 256);
    machine.PC = 0x8004;
    SlowRun();
    EXPECT_EQ(yields, 1);
}

TEST_F(RunControlTest, ARefusalIsShownAndTheNextCommandTriesAgain) {
    const std::string refusal =
        "The instruction at address 8003 (opcode C5) has no room to push two bytes on the stack: SP is 0001, at the "
        "lower end of memory. Nothing has been changed.";
    Load(u"LXI SP,1\r\nPUSH B");
    EXPECT_EQ(Run(), refusal);
    EXPECT_EQ(lineWhenTold, 2);
    machine.SP = 2;
    EXPECT_EQ(Run(), EndOf("7.15", "22"));

    EXPECT_EQ(SlowRun(), refusal);
    line = 0;
    EXPECT_EQ(Step(), refusal);
    EXPECT_EQ(line, 2);
    machine.SP = 2;
    EXPECT_EQ(Step(), "");

    control.Reset();
    machine.PC = 0xFFFE;  // no source line there
    EXPECT_TRUE(Run().starts_with("The program has come to address FFFE")) << told;
}

TEST_F(RunControlTest, StepsAndRunsAreTakenBackOneByOneWithAllThatWasShown) {
    Load(
        u"lxi sp,9000\r\nlxi h,1234\r\npush h\r\nxthl\r\nout 5\r\nmov m,a\r\ninr m\r\nout 5\r\ncall sub\r\n"
        u"inr a\r\nhlt\r\nsub:\r\ndcr b\r\nret");
    control.SetMarkedLines({10});
    machine.Ports[5] = 7;
    std::vector<decltype(Look())> moments;
    const auto execute = [&](void (RunControl::*command)()) {
        moments.push_back(Look());
        Told(command);
    };
    onYield = [this] { control.Stop(); };
    while (!machine.Halted) execute(moments.size() % 2 == 0 ? &RunControl::StepProgram : &RunControl::SlowRun);
    execute(&RunControl::StepProgram);  // tells the end
    onYield = nullptr;
    for (int run = 0; run < 4; ++run) execute(&RunControl::RunProgram);  // to the mark, and to the end
    control.ForgetChanges();
    execute(&RunControl::StepProgram);
    EXPECT_EQ(moments.size(), 13 + 1 + 4 + 1);
    for (; !moments.empty(); moments.pop_back()) {
        control.StepBack();
        EXPECT_TRUE(Look() == moments.back()) << moments.size();
    }
    EXPECT_EQ(StepsBack(), 0);
}

TEST_F(RunControlTest, TenThousandStepsOrSixteenRunsCanBeTakenBackAndWhatChangedNothingDoesNotCount) {
    Load(u"inr a\r\nloop:\r\ninr m\r\njmp loop");
    for (int step = 0; step < 10'001; ++step) Step();
    machine.Memory[0x8001] = 0x08;  // not an instruction
    for (int step = 0; step < 9; ++step) Step();
    EXPECT_EQ(StepsBack(), 10'000);
    EXPECT_EQ(machine.PC, 0x8001);

    Load(u"inr a\r\nlxi sp,1\r\npush b");
    for (int run = 0; run < 17; ++run) {
        Run();
        if (run < 16) machine.PC = 0x8000;
    }
    Run();  // which is refused at once
    EXPECT_EQ(StepsBack(), 16);
}

TEST_F(RunControlTest, AnotherChangeTakesTheMarksAwayAndOnlyForgettingTheMarksLeavesTheWayBack) {
    Load(u"inr a\r\ninr a\r\ninr a");
    const std::pair<std::function<void()>, int> changes[] = {{[this] { control.SetAssembled(true); }, 0},
                                                             {[this] { control.NoteOtherChange(); }, 0},
                                                             {[this] { control.Reset(); }, 0},
                                                             {[this] { control.ForgetChanges(); }, 1}};
    for (const auto& [change, stepsBack] : changes) {
        Step();
        EXPECT_TRUE(marked.Of(&m8085::Registers::PC));
        change();
        EXPECT_FALSE(marked.Of(&m8085::Registers::PC));
        EXPECT_EQ(next, machine.PC);
        EXPECT_EQ(StepsBack(), stepsBack);
    }
}

TEST_F(RunControlTest, InARunNothingIsTakenBackNorPastAChangeMadeInItAndInAChangedTextNothingIsSelected) {
    Load(u"inr a\r\nmvi b,2\r\nhlt");
    Step();
    onYield = [this] { control.StepBack(); };
    Run();
    EXPECT_EQ(StepsBack(), 2);
    onYield = [this] { control.NoteOtherChange(); };
    Step();
    Run();
    EXPECT_EQ(StepsBack(), 0);
    onYield = nullptr;
    Step();
    control.LoseText();
    line = -1;
    EXPECT_EQ(StepsBack(), 1);
    EXPECT_EQ(line, -1);
}

TEST_F(RunControlTest, WhatAStepOrARunHasChangedIsMarked) {
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
    EXPECT_FALSE(marked.Of(&Registers::A) || marked.Of(&Registers::CY)) << "the same value is not a change";
    Step();
    EXPECT_TRUE(markedBytes() == 1 && marked.Memory[0x90FF]);
    EXPECT_EQ(next, 0x8005);

    // A run is marked as a whole, with PC and SP as the Reset at its end leaves them; the others' forget.
    Run();
    EXPECT_TRUE(marked.Ports[7] && marked.Of(&Registers::A) && marked.Of(&Registers::PC));
    EXPECT_FALSE(marked.Ports[9] || marked.Of(&Registers::H) || markedBytes() != 0);
    EXPECT_EQ(next, 0x8000);
    Run();
    EXPECT_TRUE(!marked.Of(&Registers::PC) && marked.After.PC == 0x8000);
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
