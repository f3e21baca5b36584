#include <gtest/gtest.h>

#include "support/machine_support.h"

namespace m8085 {

using support::Byte;
using support::Execute;
using support::MachineWith;

TEST(Control, CallsAndReturns) {
    MachineState machine = MachineWith({0xCD, 0x00, 0x90});  // CALL 9000
    machine.Memory[0x9000] = 0xC9;                           // RET
    machine.ExecuteInstruction();
    EXPECT_EQ(machine.Memory[0xFFEE], 0x03);
    EXPECT_EQ(machine.Memory[0xFFEF], 0x80);
    EXPECT_EQ(machine.SP, 0xFFEE);
    EXPECT_EQ(machine.PC, 0x9000);
    EXPECT_EQ(machine.TStates, 18);
    machine.ExecuteInstruction();
    EXPECT_EQ(machine.SP, 0xFFF0);
    EXPECT_EQ(machine.PC, 0x8003);
    EXPECT_EQ(machine.TStates, 28);
}

TEST(Control, ACallReadsItsTargetAfterThePushes) {
    for (const auto& [stackPointer, target] : {std::pair{0x8003, 0x8003}, {0x8002, 0x9080}, {0x8004, 0x0300}}) {
        MachineState machine = MachineWith({0xCD, 0x00, 0x90});
        machine.SP = stackPointer;
        machine.ExecuteInstruction();
        EXPECT_EQ(machine.PC, target);
    }
}

TEST(Control, PushesAndPopsEveryPair) {
    // PUSH B D H PSW, then POP them one pair on: D H PSW B
    MachineState machine = MachineWith({0xC5, 0xD5, 0xE5, 0xF5, 0xD1, 0xE1, 0xF1, 0xC1});
    for (const int code : {0, 1, 2, 3, 4, 5}) machine.SetReg(Byte(code), Byte(0xFA + code));
    machine.SetPSW(0xFFFF);
    Execute(machine, 4);
    const std::uint8_t stack[] = {0xD5, 0xFF, 0xFF, 0xFE, 0xFD, 0xFC, 0xFB, 0xFA};
    EXPECT_TRUE(std::equal(std::begin(stack), std::end(stack), machine.Memory.begin() + 0xFFE8));
    EXPECT_EQ(machine.SP, 0xFFE8);
    Execute(machine, 4);
    EXPECT_EQ(machine.GetRegPair(1, false), 0xFFD5);
    EXPECT_EQ(machine.GetRegPair(2, false), 0xFEFF);
    EXPECT_EQ(machine.GetPSW(), 0xFCD5);
    EXPECT_EQ(machine.GetRegPair(0, false), 0xFAFB);
    EXPECT_EQ(machine.SP, 0xFFF0);
}

TEST(Control, HLMeetsTheStackAndPC) {
    MachineState machine = MachineWith({0xE3, 0xF9, 0xE9});  // XTHL, SPHL, PCHL
    machine.H = 0x12;
    machine.L = 0x34;
    machine.Memory[0xFFF0] = 0x78;
    machine.Memory[0xFFF1] = 0x56;
    machine.ExecuteInstruction();
    EXPECT_EQ(machine.GetRegPair(2, false), 0x5678);
    EXPECT_EQ(machine.Memory[0xFFF0], 0x34);
    EXPECT_EQ(machine.Memory[0xFFF1], 0x12);
    EXPECT_EQ(machine.SP, 0xFFF0);
    Execute(machine, 2);
    EXPECT_EQ(machine.SP, 0x5678);
    EXPECT_EQ(machine.PC, 0x5678);
}

TEST(Control, PortsKeepWhatWasWritten) {
    MachineState machine =
        MachineWith({0x3E, 0x5A, 0xD3, 0x10, 0xDB, 0x11, 0xDB, 0x10});  // MVI A; OUT 10; IN 11; IN 10
    Execute(machine, 3);
    EXPECT_EQ(machine.A, 0);
    machine.ExecuteInstruction();
    EXPECT_EQ(machine.A, 0x5A);
}

}  // namespace m8085
