#include "machine/full_speed.h"

#include <gtest/gtest.h>

#include <random>

#include "support/allocation_count.h"
#include "support/machine_support.h"
#include "support/workbench.h"

namespace execution {

using support::Workbench;

namespace {

// What ExecuteSlice promises, with the single step.
void StepThrough(Workbench& bench, int instructions) {
    m8085::MachineState& machine = bench.machine;
    bool ended = false;
    do {
        const std::int32_t before = machine.TStates;
        machine.ExecuteInstruction();
        const bool nothingExecuted = machine.TStates == before;
        ended = machine.Halted || nothingExecuted || !machine.CanFetch() || bench.codeMap.LineAt(machine.PC) == 0;
    } while (!ended && --instructions != 0);
}

}  // namespace

TEST(FullSpeed, LeavesTheStateThatSingleStepsLeave) {
    std::mt19937 random(8085);
    const auto below = [&random](unsigned limit) { return static_cast<int>(random() % limit); };
    Workbench fast;
    for (std::uint8_t& byte : fast.machine.Memory) byte = support::Byte(below(256));
    for (int address = 0; address < m8085::MemorySize; ++address)
        fast.codeMap.SetLine(address, below(200) == 0 ? 0 : 1);
    Workbench slow = fast;

    std::int64_t tStates = 0;
    for (int slice = 0; slice < 4000; ++slice) {
        const int length = 1 + below(100);
        const int start = below(0x10001);
        const bool jump = slice % 8 == 0 || fast.machine.TStates == 0 || !fast.machine.CanFetch();
        for (m8085::MachineState* machine : {&fast.machine, &slow.machine}) {
            tStates += machine->TStates;
            machine->TStates = 0;
            machine->Halted = false;
            machine->Refused = {};
            if (jump) machine->PC = start;
        }
        m8085::ExecuteSlice(fast.machine, fast.codeMap, length);
        StepThrough(slow, length);
        ASSERT_TRUE(support::SameState(fast.machine, slow.machine)) << "slice " << slice;
        ASSERT_EQ(fast.machine.Refused.Reason, slow.machine.Refused.Reason) << "slice " << slice;
        ASSERT_EQ(fast.machine.Refused.Operand, slow.machine.Refused.Operand) << "slice " << slice;
    }
    EXPECT_GT(tStates, 200'000) << "the programs ended too soon to show anything";
}

TEST(FullSpeed, ARunAllocatesNothing) {
    Workbench bench;
    ASSERT_TRUE(bench.Assemble(u"loop:\r\ninr m\r\npush h\r\npop h\r\njmp loop").Succeeded);
    RunControl* running = nullptr;
    int yields = 0;
    RunView view = support::SilentView();
    view.Yield = [&] {
        if (++yields == 3) running->Stop();
    };
    RunControl control(bench.machine, bench.codeMap, view);
    running = &control;
    const int before = support::AllocationCount();
    control.RunProgram();
    EXPECT_EQ(support::AllocationCount(), before);
    EXPECT_EQ(yields, 3);
}

}  // namespace execution
