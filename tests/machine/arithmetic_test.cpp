#include <gtest/gtest.h>

#include <bit>
#include <bitset>

#include "support/machine_support.h"

namespace m8085 {

using support::AllRegisterCodes;
using support::Byte;
using support::MachineWith;

namespace {

enum Operation { Addition, AdditionWithCarry, Subtraction, SubtractionWithBorrow, And, Xor, Or, Comparison };

constexpr std::uint8_t ImmediateOpcode(int operation) {
    return Byte(0xC6 + 8 * operation);
}

int FlagByte(int result, bool auxiliaryCarry, bool carry) {
    const bool evenParity = std::bitset<8>(static_cast<unsigned>(result)).count() % 2 == 0;
    return (result >= 0x80 ? 0x80 : 0) + (result == 0 ? 0x40 : 0) + (auxiliaryCarry ? 0x10 : 0) +
           (evenParity ? 0x04 : 0) + (carry ? 0x01 : 0);
}

// The PSW after an operation on a and v.
int ExpectedPSW(int operation, int a, int v, bool carry, bool auxiliaryCarry) {
    const bool usesCarry = operation == AdditionWithCarry || operation == SubtractionWithBorrow;
    const int c = usesCarry && carry ? 1 : 0;
    int result = 0;
    bool newCarry = false;
    switch (operation) {
        case Addition:
        case AdditionWithCarry:
            result = (a + v + c) % 256;
            newCarry = a + v + c > 255;
            auxiliaryCarry = a % 16 + v % 16 + c >= 10;
            break;
        case And: result = a & v; break;
        case Xor: result = a ^ v; break;
        case Or: result = a | v; break;
        default: result = (a + 512 - v - c) % 256; newCarry = a < v + c;
    }
    const int newA = operation == Comparison ? a : result;
    return newA * 256 + FlagByte(result, auxiliaryCarry, newCarry);
}

}  // namespace

TEST(Arithmetic, EightOperationsOnAllOperands) {
    MachineState machine;
    for (int operation = 0; operation < 8; ++operation) {
        machine.Memory[0] = ImmediateOpcode(operation);
        for (int a = 0; a < 256; ++a)
            for (int v = 0; v < 256; ++v)
                for (const bool carry : {false, true}) {
                    const bool auxiliaryCarry = (a + v) % 3 == 0;
                    machine.PC = 0;
                    machine.Memory[1] = Byte(v);
                    machine.SetPSW(static_cast<std::uint16_t>(a << 8 | (auxiliaryCarry ? 0x10 : 0) | (carry ? 1 : 0)));
                    machine.ExecuteInstruction();
                    ASSERT_EQ(machine.GetPSW(), ExpectedPSW(operation, a, v, carry, auxiliaryCarry))
                        << "operation " << operation << ", A " << a << ", operand " << v << ", carry " << carry;
                }
    }
}

TEST(Arithmetic, RegisterFormsWorkLikeTheImmediateForm) {
    for (int operation = 0; operation < 8; ++operation)
        for (const int source : AllRegisterCodes) {
            const int opcode = 0x80 + 8 * operation + source;
            MachineState byRegister = MachineWith({Byte(opcode)});
            support::SetDistinctValues(byRegister);
            byRegister.CY = true;
            MachineState immediate = byRegister;
            immediate.Memory[0x8000] = ImmediateOpcode(operation);
            immediate.Memory[0x8001] = byRegister.GetReg(Byte(source));
            byRegister.ExecuteInstruction();
            immediate.ExecuteInstruction();
            EXPECT_EQ(byRegister.GetPSW(), immediate.GetPSW()) << opcode;
        }
}

TEST(Arithmetic, IncrementAndDecrementKeepCarryAndAuxiliaryCarry) {
    MachineState machine;
    for (const int destination : AllRegisterCodes)
        for (int value = 0; value < 256; ++value)
            for (const int change : {1, 255}) {
                machine.PC = 0x8000;
                machine.Memory[0x8000] = Byte(8 * destination + (change == 1 ? 4 : 5));
                machine.SetPSW(value % 2 != 0 ? 0x0001 : 0x0010);
                machine.SetReg(Byte(destination), Byte(value));
                machine.ExecuteInstruction();
                const int result = (value + change) % 256;
                ASSERT_EQ(machine.GetReg(Byte(destination)), result);
                ASSERT_EQ(machine.GetFlagByte(), FlagByte(result, value % 2 == 0, value % 2 != 0));
            }
}

TEST(Arithmetic, RotatesChangeNothingButAAndCarry) {
    MachineState machine;
    const auto rotated = [&machine](std::uint8_t opcode, int nineBits) {
        machine.PC = 0;
        machine.Memory[0] = opcode;
        machine.SetPSW(static_cast<std::uint16_t>((nineBits & 0xFF) << 8 | 0xD4 | nineBits >> 8));
        machine.ExecuteInstruction();
        return int{machine.GetPSW()};
    };
    for (int nineBits = 0; nineBits < 512; ++nineBits) {
        const auto psw = [](int a, int carry) { return (a & 0xFF) << 8 | 0xD4 | carry; };
        const std::uint8_t a = Byte(nineBits);
        const int left = nineBits << 1 | nineBits >> 8;
        const int right = nineBits >> 1 | (nineBits & 1) << 8;
        ASSERT_EQ(rotated(0x07, nineBits), psw(std::rotl(a, 1), a >> 7)) << "RLC";
        ASSERT_EQ(rotated(0x0F, nineBits), psw(std::rotr(a, 1), a & 1)) << "RRC";
        ASSERT_EQ(rotated(0x17, nineBits), psw(left, left >> 8 & 1)) << "RAL";
        ASSERT_EQ(rotated(0x1F, nineBits), psw(right, right >> 8)) << "RAR";
    }
}

TEST(Arithmetic, DecimalAdjustOfEveryState) {
    MachineState machine;
    machine.Memory[0] = 0x27;
    for (int a = 0; a < 256; ++a)
        for (const int flags : {0x00, 0x01, 0x10, 0x11, 0xC4, 0xC5, 0xD4, 0xD5}) {
            const bool auxiliaryCarry = (flags & 0x10) != 0;
            const int lowAdjusted = a % 16 > 9 || auxiliaryCarry ? a + 6 : a;
            const bool high = lowAdjusted >= 0xA0 || (flags & 1) != 0;
            const int result = (lowAdjusted + (high ? 0x60 : 0)) % 256;
            machine.PC = 0;
            machine.SetPSW(static_cast<std::uint16_t>(a << 8 | flags));
            machine.ExecuteInstruction();
            ASSERT_EQ(machine.GetPSW(), result * 256 + (high ? FlagByte(result, auxiliaryCarry, true) : flags))
                << "A " << a << ", flags " << flags;
        }
}

TEST(Arithmetic, PackedDecimalAdditionComesOutRight) {
    MachineState machine = MachineWith({0x88, 0x27});  // ADC B, DAA
    const auto packed = [](int number) { return Byte(number / 10 * 16 + number % 10); };
    for (int left = 0; left < 100; ++left)
        for (int right = 0; right < 100; ++right)
            for (const int carry : {0, 1}) {
                machine.PC = 0x8000;
                machine.A = packed(left);
                machine.B = packed(right);
                machine.CY = carry != 0;
                support::Execute(machine, 2);
                const int sum = left + right + carry;
                ASSERT_EQ(machine.A, packed(sum % 100)) << left << " + " << right << " + " << carry;
                ASSERT_EQ(machine.CY, sum > 99) << left << " + " << right << " + " << carry;
            }
}

TEST(Arithmetic, SixteenBitOperationsTouchNoFlagButTheCarryOfDAD) {
    const auto execute = [](int opcode, int pairValue, int hl) {
        MachineState machine = MachineWith({Byte(opcode)});
        support::SetAllFlags(machine, true);
        machine.SetRegPair(2, Byte(hl >> 8), Byte(hl), false);
        machine.SetRegPair(Byte(opcode >> 4), Byte(pairValue >> 8), Byte(pairValue), false);
        machine.ExecuteInstruction();
        EXPECT_EQ(machine.GetFlagByte() | 1, 0xD5);
        return machine;
    };
    for (std::uint8_t pair = 0; pair < 4; ++pair) {
        const auto afterINX = [&](int value) { return execute(0x03 + 0x10 * pair, value, 0); };
        const auto afterDCX = [&](int value) { return execute(0x0B + 0x10 * pair, value, 0); };
        const auto afterDAD = [&](int value) { return execute(0x09 + 0x10 * pair, value, value); };
        EXPECT_EQ(afterINX(0xFFFF).GetRegPair(pair, false), 0);
        EXPECT_EQ(afterINX(0x12FF).GetRegPair(pair, false), 0x1300);
        EXPECT_EQ(afterDCX(0).GetRegPair(pair, false), 0xFFFF);
        EXPECT_EQ(afterDCX(0x1300).GetRegPair(pair, false), 0x12FF);
        EXPECT_EQ(afterDAD(0x8001).GetRegPair(2, false), 2);
        EXPECT_TRUE(afterINX(0xFFFE).CY && afterDCX(0).CY && afterDAD(0x8000).CY);
    }
    EXPECT_FALSE(execute(0x09, 0x8000, 0x7FFF).CY) << "FFFF still fits";
}

TEST(Arithmetic, ComplementsAndSetsWithoutOtherFlags) {
    MachineState machine = MachineWith({0x2F, 0x37, 0x3F, 0x3F});  // CMA, STC, CMC, CMC
    machine.SetPSW(0x5AD4);
    const int expected[] = {0xA5D4, 0xA5D5, 0xA5D4, 0xA5D5};
    for (const int psw : expected) {
        machine.ExecuteInstruction();
        EXPECT_EQ(machine.GetPSW(), psw);
    }
}

}  // namespace m8085
