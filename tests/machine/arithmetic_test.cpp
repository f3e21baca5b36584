#include <gtest/gtest.h>

#include <bit>
#include <bitset>

#include "support/machine_support.h"

namespace m8085 {

using support::Byte;

namespace {

int FlagByte(int result, bool auxiliaryCarry, bool carry) {
    const bool evenParity = std::bitset<8>(static_cast<unsigned>(result)).count() % 2 == 0;
    return (result >= 0x80 ? 0x80 : 0) + (result == 0 ? 0x40 : 0) + (auxiliaryCarry ? 0x10 : 0) +
           (evenParity ? 0x04 : 0) + (carry ? 0x01 : 0);
}

enum Operation { Addition, AdditionWithCarry, Subtraction, SubtractionWithBorrow, And, Xor, Or, Comparison };

// The PSW after an operation on a and v.
int ExpectedPSW(int operation, int a, int v, bool carry, bool auxiliaryCarry) {
    const int c = carry && (operation == AdditionWithCarry || operation == SubtractionWithBorrow) ? 1 : 0;
    const auto psw = [&](int result, bool newCarry) {
        return (operation == Comparison ? a : result) * 256 + FlagByte(result, auxiliaryCarry, newCarry);
    };
    switch (operation) {
        case Addition:
        case AdditionWithCarry:
            auxiliaryCarry = a % 16 + v % 16 + c >= 10;
            return psw((a + v + c) % 256, a + v + c > 255);
        case And: return psw(a & v, false);
        case Xor: return psw(a ^ v, false);
        case Or: return psw(a | v, false);
        default: return psw((a + 512 - v - c) % 256, a < v + c);
    }
}

class Arithmetic : public ::testing::Test {
protected:
    int PSWAfter(int opcode, int psw) {
        machine.PC = 0x8000;
        machine.Memory[0x8000] = Byte(opcode);
        machine.SetPSW(static_cast<std::uint16_t>(psw));
        machine.ExecuteInstruction();
        return machine.GetPSW();
    }

    MachineState machine = support::MachineWith({});
};

}  // namespace

// Each operation takes the registers, M and the immediate byte in turn.
TEST_F(Arithmetic, EightOperationsOnAllOperands) {
    for (int operation = 0; operation < 8; ++operation)
        for (int a = 0; a < 256; ++a)
            for (int v = 0; v < 256; ++v)
                for (const bool carry : {false, true}) {
                    const int source = (a + v) % 8;
                    const bool auxiliaryCarry = (a + v) % 3 == 0;
                    machine.H = 0x9C;
                    if (source == 7)
                        machine.Memory[0x8001] = Byte(v);
                    else
                        machine.SetReg(Byte(source), Byte(v));
                    const int opcode = source == 7 ? 0xC6 + 8 * operation : 0x80 + 8 * operation + source;
                    ASSERT_EQ(PSWAfter(opcode, a << 8 | (auxiliaryCarry ? 0x10 : 0) | (carry ? 1 : 0)),
                              ExpectedPSW(operation, a, v, carry, auxiliaryCarry))
                        << "code " << opcode << ", A " << a << ", operand " << v << ", carry " << carry;
                }
    for (int operation = 0; operation < 8; ++operation)
        EXPECT_EQ(PSWAfter(0x87 + 8 * operation, 0xC811), ExpectedPSW(operation, 0xC8, 0xC8, true, true));
}

TEST_F(Arithmetic, IncrementAndDecrementKeepCarryAndAuxiliaryCarry) {
    for (const int change : {1, 255})
        for (std::uint8_t destination = 0; destination < 8; ++destination)
            for (int value = 0; value < 256; ++value) {
                const bool odd = value % 2 != 0;
                machine.SetReg(destination, Byte(value));
                PSWAfter(8 * destination + (change == 1 ? 4 : 5), machine.A << 8 | (odd ? 0x01 : 0x10));
                const int result = (value + change) % 256;
                ASSERT_EQ(machine.GetReg(destination), result);
                ASSERT_EQ(machine.GetFlagByte(), FlagByte(result, !odd, odd));
            }
}

TEST_F(Arithmetic, RotatesAndComplementsChangeNothingButAAndCarry) {
    for (int nineBits = 0; nineBits < 512; ++nineBits) {
        const auto psw = [](int nine) { return (nine & 0xFF) << 8 | 0xD4 | (nine >> 8 & 1); };
        const std::uint8_t a = Byte(nineBits);
        ASSERT_EQ(PSWAfter(0x07, psw(nineBits)), psw((a >> 7) << 8 | std::rotl(a, 1))) << "RLC";
        ASSERT_EQ(PSWAfter(0x0F, psw(nineBits)), psw((a & 1) << 8 | std::rotr(a, 1))) << "RRC";
        ASSERT_EQ(PSWAfter(0x17, psw(nineBits)), psw(nineBits << 1 | nineBits >> 8)) << "RAL";
        ASSERT_EQ(PSWAfter(0x1F, psw(nineBits)), psw(nineBits >> 1 | (nineBits & 1) << 8)) << "RAR";
        ASSERT_EQ(PSWAfter(0x2F, psw(nineBits)), psw(nineBits ^ 0x0FF)) << "CMA";
        ASSERT_EQ(PSWAfter(0x37, psw(nineBits)), psw(nineBits | 0x100)) << "STC";
        ASSERT_EQ(PSWAfter(0x3F, psw(nineBits)), psw(nineBits ^ 0x100)) << "CMC";
    }
}

TEST_F(Arithmetic, DecimalAdjustOfEveryState) {
    for (int a = 0; a < 256; ++a)
        for (const int flags : {0x00, 0x01, 0x10, 0x11, 0xC4, 0xC5, 0xD4, 0xD5}) {
            const bool auxiliaryCarry = (flags & 0x10) != 0;
            const int lowAdjusted = a % 16 > 9 || auxiliaryCarry ? a + 6 : a;
            const bool high = lowAdjusted >= 0xA0 || (flags & 1) != 0;
            const int result = (lowAdjusted + (high ? 0x60 : 0)) % 256;
            ASSERT_EQ(PSWAfter(0x27, a << 8 | flags),
                      result * 256 + (high ? FlagByte(result, auxiliaryCarry, true) : flags))
                << "A " << a << ", flags " << flags;
        }
}

TEST_F(Arithmetic, SixteenBitOperationsTouchNoFlagButTheCarryOfDAD) {
    const auto set = [this](int pair, int value) {
        machine.SetRegPair(Byte(pair), Byte(value >> 8), Byte(value), false);
    };
    for (std::uint8_t pair = 0; pair < 4; ++pair) {
        const auto after = [&](int opcode, int value, int flags) {
            set(2, 0x7FFF);
            set(pair, value);
            EXPECT_EQ(PSWAfter(opcode + 0x10 * pair, 0xD5) & 0xFF, flags);
            return machine.GetRegPair(opcode == 0x09 ? 2 : pair, false);
        };
        EXPECT_EQ(after(0x03, 0xFFFF, 0xD5), 0);  // INX
        EXPECT_EQ(after(0x03, 0x12FF, 0xD5), 0x1300);
        EXPECT_EQ(after(0x0B, 0x0000, 0xD5), 0xFFFF);  // DCX
        EXPECT_EQ(after(0x0B, 0x1300, 0xD5), 0x12FF);
        EXPECT_EQ(after(0x09, 0x8001, 0xD5), pair == 2 ? 2 : 0);  // DAD
        EXPECT_EQ(after(0x09, 0x8000, pair == 2 ? 0xD5 : 0xD4), pair == 2 ? 0 : 0xFFFF);
    }
}

}  // namespace m8085
