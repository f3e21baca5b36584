#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string_view>

#include "machine/code_map.h"
#include "support/machine_support.h"

namespace m8085 {

using support::Byte;
using support::Execute;
using support::MachineWith;
using support::SameState;

namespace {

// What the codes 00 to 3F and C0 to FF add to TStates, a condition failing; 0 for a code that is no instruction.
constexpr std::array<int, 128> irregularTStates = {
    4, 10, 7,  6,  4,  4,  7,  4, 0, 10, 7,  6,  4, 4,  7, 4,  // 00
    0, 10, 7,  6,  4,  4,  7,  4, 0, 10, 7,  6,  4, 4,  7, 4,  // 10
    0, 10, 16, 6,  4,  4,  7,  4, 0, 10, 16, 6,  4, 4,  7, 4,  // 20
    0, 10, 13, 6,  10, 10, 10, 4, 0, 10, 13, 6,  4, 4,  7, 4,  // 30
    6, 10, 7,  10, 9,  12, 7,  0, 6, 10, 7,  0,  9, 18, 7, 0,  // C0
    6, 10, 7,  10, 9,  12, 7,  0, 6, 0,  7,  10, 9, 0,  7, 0,  // D0
    6, 10, 7,  16, 9,  12, 7,  0, 6, 6,  7,  4,  9, 0,  7, 0,  // E0
    6, 10, 7,  0,  9,  12, 7,  0, 6, 6,  7,  0,  9, 0,  7, 0,  // F0
};

// How far the same codes move PC, a condition failing. a, s, h: to the address in the instruction, on the stack, in HL.
constexpr std::string_view irregularLengths =
    "1311112101111121"
    "0311112101111121"
    "0331112101311121"
    "0331112101311121"
    "113a31201s303a20"
    "1132312010323020"
    "113131201h313020"
    "1130312011303020";

bool IsMoveOrAccumulatorFamily(int opcode) {
    return opcode >= 0x40 && opcode < 0xC0;
}

std::size_t IrregularIndex(int opcode) {
    return static_cast<std::size_t>(opcode < 0x40 ? opcode : opcode - 0x80);
}

int TStatesOf(int opcode) {
    if (!IsMoveOrAccumulatorFamily(opcode)) return irregularTStates[IrregularIndex(opcode)];
    if (opcode == 0x76) return 5;
    const bool namesM = (opcode & 7) == 6 || (opcode >= 0x70 && opcode <= 0x77);
    return namesM ? 7 : 4;
}

int NextPC(int opcode) {
    if (opcode == 0x76) return 0x8000;
    const char length = IsMoveOrAccumulatorFamily(opcode) ? '1' : irregularLengths[IrregularIndex(opcode)];
    switch (length) {
        case 'a': return 0x2345;
        case 's': return 0x5678;
        case 'h': return 0x9000;
        default: return 0x8000 + length - '0';
    }
}

// The opcode at 8000 with the operand 2345, 5678 on the stack, 9000 in HL.
MachineState MachineBefore(int opcode) {
    MachineState machine = MachineWith({Byte(opcode), 0x45, 0x23});
    machine.H = 0x90;
    machine.Memory[0xFFF0] = 0x78;
    machine.Memory[0xFFF1] = 0x56;
    return machine;
}

bool IsConditional(int opcode) {
    return opcode >= 0xC0 && ((opcode & 7) == 0 || (opcode & 7) == 2 || (opcode & 7) == 4);
}

// Gives the flag that a conditional instruction tests one value and all others the opposite one, so that a test of the
// wrong flag shows.
void SetTestedFlag(MachineState& machine, int opcode, bool value) {
    support::SetAllFlags(machine, !value);
    bool* const tested[] = {&machine.Z, &machine.CY, &machine.P, &machine.S};
    *tested[opcode >> 4 & 3] = value;
}

}  // namespace

TEST(InstructionCycle, EveryCodeMovesPCAndChargesItsTStates) {
    for (int opcode = 0; opcode < 256; ++opcode) {
        SCOPED_TRACE(opcode);
        MachineState machine = MachineBefore(opcode);
        const bool holdsFor = (opcode & 8) != 0;
        if (IsConditional(opcode)) SetTestedFlag(machine, opcode, !holdsFor);
        const MachineState before = machine;
        machine.ExecuteInstruction();
        EXPECT_EQ(machine.PC, NextPC(opcode));
        EXPECT_EQ(machine.TStates, TStatesOf(opcode));
        EXPECT_EQ(machine.Halted, opcode == 0x76);
        EXPECT_EQ(machine.Refused.Reason, Limit::None);
        EXPECT_EQ(SameState(machine, before), TStatesOf(opcode) == 0);
    }
}

TEST(InstructionCycle, AConditionThatHoldsTransfersControl) {
    for (int opcode = 0xC0; opcode < 256; ++opcode) {
        if (!IsConditional(opcode)) continue;
        SCOPED_TRACE(opcode);
        MachineState machine = MachineBefore(opcode);
        SetTestedFlag(machine, opcode, (opcode & 8) != 0);
        const std::uint8_t flags = machine.GetFlagByte();
        machine.ExecuteInstruction();
        const bool returns = (opcode & 7) == 0;
        const bool calls = (opcode & 7) == 4;
        EXPECT_EQ(machine.PC, returns ? 0x5678 : 0x2345);
        EXPECT_EQ(machine.TStates, returns ? 12 : calls ? 18 : 10);
        EXPECT_EQ(machine.SP, returns ? 0xFFF2 : calls ? 0xFFEE : 0xFFF0);
        EXPECT_EQ(machine.GetFlagByte(), flags);
    }
}

TEST(InstructionCycle, MovesBetweenAllRegistersAndMemory) {
    for (int opcode = 0x40; opcode < 0x80; ++opcode) {
        if (opcode == 0x76) continue;
        SCOPED_TRACE(opcode);
        MachineState machine = MachineWith({Byte(opcode)});
        support::SetDistinctValues(machine);
        MachineState expected = machine;
        machine.ExecuteInstruction();
        expected.SetReg(Byte(opcode >> 3), expected.GetReg(Byte(opcode)));
        expected.TStates = TStatesOf(opcode);
        expected.PC = 0x8001;
        EXPECT_TRUE(SameState(machine, expected));
    }
}

TEST(InstructionCycle, LoadsAndStores) {
    MachineState machine = MachineWith({0x01, 0x00, 0x90,    // LXI BC,9000
                                        0x11, 0x01, 0x90,    // LXI DE,9001
                                        0x21, 0x34, 0x12,    // LXI HL,1234
                                        0x31, 0x00, 0xA0,    // LXI SP,A000
                                        0x3E, 0xAA, 0x02,    // MVI A,AA and STAX BC
                                        0x3E, 0xBB, 0x12,    // MVI A,BB and STAX DE
                                        0x22, 0xFE, 0xFF,    // SHLD FFFE
                                        0x3A, 0x00, 0x90,    // LDA 9000
                                        0x32, 0x02, 0x90,    // STA 9002
                                        0x2A, 0x01, 0x90,    // LHLD 9001
                                        0x0A, 0x1A, 0xEB});  // LDAX BC, LDAX DE, XCHG
    Execute(machine, 9);
    EXPECT_EQ(machine.SP, 0xA000);
    EXPECT_EQ(machine.Memory[0x9000], 0xAA);
    EXPECT_EQ(machine.Memory[0x9001], 0xBB);
    EXPECT_EQ(machine.Memory[0xFFFE], 0x34);
    EXPECT_EQ(machine.Memory[0xFFFF], 0x12);
    Execute(machine, 3);
    EXPECT_EQ(machine.Memory[0x9002], 0xAA);
    EXPECT_EQ(machine.GetRegPair(2, false), 0xAABB);
    Execute(machine, 1);
    EXPECT_EQ(machine.A, 0xAA);
    Execute(machine, 2);
    EXPECT_EQ(machine.A, 0xBB);
    EXPECT_EQ(machine.GetRegPair(1, false), 0xAABB);
    EXPECT_EQ(machine.GetRegPair(2, false), 0x9001);
    EXPECT_EQ(machine.GetFlagByte(), 0);
}

TEST(InstructionCycle, ReadsTheProgramAfreshForEachInstruction) {
    MachineState machine = MachineWith({0x3E, 0x04, 0x32, 0x05, 0x80, 0x00});  // MVI A,04; STA 8005; NOP becomes INR B
    Execute(machine, 3);
    EXPECT_EQ(machine.B, 1);

    MachineState overOperand = MachineWith({0x22, 0x01, 0x80});  // SHLD over its own operand
    overOperand.H = 0x12;
    overOperand.L = 0x34;
    overOperand.ExecuteInstruction();
    EXPECT_EQ(overOperand.Memory[0x8001], 0x34);
    EXPECT_EQ(overOperand.Memory[0x8002], 0x12);
}

TEST(InstructionCycle, HLTExecutesAgainWhenCalledAgain) {
    MachineState machine = MachineWith({0x76});
    Execute(machine, 2);
    EXPECT_TRUE(machine.Halted);
    EXPECT_EQ(machine.PC, 0x8000);
    EXPECT_EQ(machine.TStates, 10);
}

TEST(InstructionCycle, PCRunsPastTheEndOfMemoryUnmasked) {
    MachineState machine;
    machine.PC = 0xFFFD;
    machine.Memory[0xFFFD] = 0x01;  // LXI BC
    machine.ExecuteInstruction();
    EXPECT_EQ(machine.PC, 0x10000);

    machine.PC = 0xFFFD;
    machine.Memory[0xFFFD] = 0x00;
    machine.ExecuteInstruction();
    EXPECT_EQ(machine.PC, 0xFFFE);
}

TEST(InstructionCycle, TStatesStayAtTheirLimit) {
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
    // NOP; INR M, which charges three times; RET
    for (const int opcode : {0x00, 0x34, 0xC9})
        for (const std::int32_t room : {0, 3, 8}) {
            MachineState machine = MachineWith({Byte(opcode)});
            machine.TStates = most - room;
            machine.ExecuteInstruction();
            EXPECT_EQ(machine.TStates, opcode == 0x00 && room == 8 ? most - 4 : most);
        }
}

TEST(CodeMap, AnswersZeroOutsideMemory) {
    CodeMap map;
    for (const std::int32_t outside : {-1, 0x10000}) {
        map.SetLine(outside, 7);
        EXPECT_EQ(map.LineAt(outside), 0);
    }
    map.SetLine(0xFFFF, 7);
    EXPECT_EQ(map.LineAt(0xFFFF), 7);
    EXPECT_EQ(map.LineAt(0), 0);
}

}  // namespace m8085
