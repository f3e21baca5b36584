#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

#include "support/machine_support.h"

namespace m8085 {

using support::Byte;
using support::Execute;
using support::MachineWith;

namespace {

// One digit for each code from 00 to FF, 32 a line: its T-states with a condition failing, letters from a standing for
// 10 and more, 0 for a code that is not an instruction.
constexpr std::string_view tStatesOf =
    "4a7644740a7644740a7644740a764474"
    "0ag644740ag644740ad6aaa40ad64474"
    "44444474444444744444447444444474"
    "44444474444444747777775744444474"
    "44444474444444744444447444444474"
    "44444474444444744444447444444474"
    "6a7a9c706a709i706a7a9c70607a9070"
    "6a7g9c70667490706a709c7066709070";

// How far it moves PC; a, s and h: to the address in the instruction, on the stack and in HL.
constexpr std::string_view lengthOf =
    "13111121011111210311112101111121"
    "03311121013111210331112101311121"
    "11111111111111111111111111111111"
    "11111111111111111111110111111111"
    "11111111111111111111111111111111"
    "11111111111111111111111111111111"
    "113a31201s303a201132312010323020"
    "113131201h3130201130312011303020";

}  // namespace

// A conditional instruction finds the flag that it tests at one value and all others at the opposite one.
TEST(InstructionCycle, EveryCodeMovesPCAndSPAndChargesItsTStates) {
    for (int opcode = 0; opcode < 256; ++opcode)
        for (const bool holds : {false, true}) {
            SCOPED_TRACE(opcode);
            MachineState machine = MachineWith({opcode, 0x45, 0x23});
            machine.Memory[0xFFF0] = 0x78;
            machine.Memory[0xFFF1] = 0x56;
            const bool flag = ((opcode & 8) != 0) == holds;
            support::SetAllFlags(machine, !flag);
            bool* const testedFlags[] = {&machine.Z, &machine.CY, &machine.P, &machine.S};
            *testedFlags[opcode >> 4 & 3] = flag;
            const MachineState before = machine;
            machine.ExecuteInstruction();

            const bool conditional = opcode >= 0xC0 && ((opcode & 1) == 0 && (opcode & 7) != 6);
            const char digit = tStatesOf[static_cast<std::size_t>(opcode)];
            int tStates = digit <= '9' ? digit - '0' : digit - 'a' + 10;
            char length = lengthOf[static_cast<std::size_t>(opcode)];
            if (conditional && holds) {
                constexpr std::pair<int, char> taken[] = {{12, 's'}, {10, 'a'}, {18, 'a'}};
                std::tie(tStates, length) = taken[(opcode & 7) / 2];
            }
            const bool calls = opcode == 0xCD || (conditional && (opcode & 7) == 4 && holds);
            EXPECT_EQ(machine.TStates, tStates);
            EXPECT_EQ(machine.PC, length == 'a'   ? 0x2345
                                  : length == 's' ? 0x5678
                                  : length == 'h' ? 0x9C9F
                                                  : 0x8000 + length - '0');
            EXPECT_EQ(calls, machine.Memory[0xFFEE] == 0x03 && machine.Memory[0xFFEF] == 0x80 && machine.SP == 0xFFEE);
            EXPECT_EQ(length == 's' || (opcode & 0xCF) == 0xC1, machine.SP == 0xFFF2);
            EXPECT_EQ(machine.Halted, opcode == 0x76);
            EXPECT_EQ(machine.Refused.Reason, Limit::None);
            EXPECT_EQ(machine == before, tStates == 0);
        }
}

TEST(InstructionCycle, MovesBetweenAllRegistersAndMemory) {
    for (int opcode = 0x40; opcode < 0x80; ++opcode) {
        if (opcode == 0x76) continue;
        MachineState machine = MachineWith({opcode});
        MachineState expected = machine;
        machine.ExecuteInstruction();
        expected.SetReg(Byte(opcode >> 3), expected.GetReg(Byte(opcode)));
        expected.TStates += 4;
        expected.PC = 0x8001;
        EXPECT_TRUE(machine == expected) << opcode;
    }
}

TEST(InstructionCycle, LoadsAndStores) {
    MachineState machine =
        MachineWith({0x01, 0x00, 0x90, 0x11, 0x01, 0x90,        // LXI BC,9000; LXI DE,9001
                     0x3E, 0xAA, 0x02, 0x36, 0xBB, 0x7E, 0x12,  // MVI A,AA; STAX BC; MVI M,BB; MOV A,M; STAX DE
                     0x21, 0x34, 0x12, 0x22, 0xFE, 0xFF,        // LXI HL,1234; SHLD FFFE
                     0x3A, 0x00, 0x90, 0x32, 0x02, 0x90,        // LDA 9000; STA 9002
                     0x2A, 0x01, 0x90, 0xEB, 0x0A, 0x1A});      // LHLD 9001; XCHG; LDAX BC, LDAX DE
    machine.Memory[0xAABB] = 0xCC;
    Execute(machine, 13);
    EXPECT_EQ(machine.Memory[0xFFFE], 0x34);
    EXPECT_EQ(machine.Memory[0xFFFF], 0x12);
    EXPECT_EQ(machine.Memory[0x9002], 0xAA);
    EXPECT_EQ(machine.GetRegPair(1, false), 0xAABB);
    EXPECT_EQ(machine.GetRegPair(2, false), 0x9001);
    machine.ExecuteInstruction();
    EXPECT_EQ(machine.A, 0xAA);
    machine.ExecuteInstruction();
    EXPECT_EQ(machine.A, 0xCC);
}

TEST(InstructionCycle, PushesAndPopsEveryPair) {
    // PUSH B D H PSW, then POP them one pair on: D H PSW B
    MachineState machine = MachineWith({0xC5, 0xD5, 0xE5, 0xF5, 0xD1, 0xE1, 0xF1, 0xC1});
    support::SetAllFlags(machine, true);
    Execute(machine, 4);
    const std::uint8_t stack[] = {0xD5, 0xA5, 0x9F, 0x9C, 0x99, 0x96, 0x93, 0x90};
    EXPECT_TRUE(std::equal(std::begin(stack), std::end(stack), machine.Memory.begin() + 0xFFE8));
    EXPECT_EQ(machine.SP, 0xFFE8);
    Execute(machine, 4);
    EXPECT_EQ(machine.GetRegPair(1, false), 0xA5D5);
    EXPECT_EQ(machine.GetRegPair(2, false), 0x9C9F);
    EXPECT_EQ(machine.GetPSW(), 0x9691) << "99 without its bit 3";
    EXPECT_EQ(machine.GetRegPair(0, false), 0x9093);
}

TEST(InstructionCycle, ExchangesWithTheStackAndWithPorts) {
    MachineState machine =
        MachineWith({0xE3, 0xF9, 0xD3, 0x10, 0xDB, 0x11, 0xDB, 0x10});  // XTHL; SPHL; OUT 10; IN 11; IN 10
    machine.Memory[0xFFF0] = 0x78;
    machine.Memory[0xFFF1] = 0x56;
    Execute(machine, 2);
    EXPECT_EQ(machine.SP, 0x5678);
    EXPECT_EQ(machine.Memory[0xFFF0], 0x9F);
    EXPECT_EQ(machine.Memory[0xFFF1], 0x9C);
    Execute(machine, 2);
    EXPECT_EQ(machine.A, 0);
    Execute(machine, 1);
    EXPECT_EQ(machine.A, 0xA5);
}

TEST(InstructionCycle, AnInstructionThatOverwritesItselfKeepsItsOrderOfAccesses) {
    // a call reads its target after the pushes
    for (const auto& [stackPointer, target] : {std::pair{0x8003, 0x8003}, {0x8002, 0x9080}, {0x8004, 0x0300}}) {
        MachineState machine = MachineWith({0xCD, 0x00, 0x90});
        machine.SP = stackPointer;
        machine.ExecuteInstruction();
        EXPECT_EQ(machine.PC, target);
    }
    MachineState machine = MachineWith({0x22, 0x01, 0x80});  // SHLD 8001
    Execute(machine, 1);
    EXPECT_EQ(machine.Memory[0x8001], 0x9F);
    EXPECT_EQ(machine.Memory[0x8002], 0x9C);
}

}  // namespace m8085
