#include <gtest/gtest.h>

#include "support/machine_support.h"

namespace m8085 {

using support::SameState;

namespace {

struct Attempt {
    std::uint8_t Opcode;
    std::int32_t PC;
    std::int32_t SP;
    std::uint16_t Word = 0;
};

struct RefusedAttempt {
    Attempt Tried;
    Limit Reason;
    std::int32_t Operand;
};

// All flags true, so that the conditions Z, C, PE and M hold and the others fail.
MachineState MachineFor(const Attempt& attempt) {
    MachineState machine;
    machine.PC = attempt.PC;
    machine.SP = attempt.SP;
    machine.TStates = 1000;
    machine.H = 0x12;
    machine.L = 0x34;
    support::SetAllFlags(machine, true);
    const std::uint8_t bytes[] = {attempt.Opcode, static_cast<std::uint8_t>(attempt.Word & 0xFF),
                                  static_cast<std::uint8_t>(attempt.Word >> 8)};
    for (int i = 0; i < 3; ++i)
        if (attempt.PC + i >= 0 && attempt.PC + i < MemorySize)
            machine.Memory[static_cast<std::size_t>(attempt.PC + i)] = bytes[i];
    return machine;
}

}  // namespace

TEST(Refusal, ChangesNothingAndTellsTheReason) {
    const RefusedAttempt attempts[] = {
        {{0x00, 0xFFFE, 0xFFF0}, Limit::Fetch, 0xFFFE},  // NOP
        {{0x00, 0x10000, 0xFFF0}, Limit::Fetch, 0x10000},
        {{0x00, -1, 0xFFF0}, Limit::Fetch, -1},
        {{0x2A, 0x8000, 0xFFF0, 0xFFFF}, Limit::WordAddress, 0xFFFF},     // LHLD
        {{0x22, 0x8000, 0xFFF0, 0xFFFF}, Limit::WordAddress, 0xFFFF},     // SHLD
        {{0xCD, 0x8000, 1, 0x9000}, Limit::Push, 1},                      // CALL
        {{0xCC, 0x8000, 0, 0x9000}, Limit::Push, 0},                      // CZ
        {{0xC5, 0x8000, 1}, Limit::Push, 1},                              // PUSH B
        {{0xF5, 0x8000, 0}, Limit::Push, 0},                              // PUSH PSW
        {{0xC9, 0x8000, 0xFFFF}, Limit::Pop, 0xFFFF},                     // RET
        {{0xC8, 0x8000, 0x10000}, Limit::Pop, 0x10000},                   // RZ
        {{0xC1, 0x8000, 0xFFFF}, Limit::Pop, 0xFFFF},                     // POP B
        {{0xF1, 0x8000, 0x10000}, Limit::Pop, 0x10000},                   // POP PSW
        {{0xE3, 0x8000, 0xFFFF}, Limit::Pop, 0xFFFF},                     // XTHL
        {{0xCD, 0xFFFD, 0xFFF0, 0x9000}, Limit::ReturnAddress, 0x10000},  // CALL
        {{0xFC, 0xFFFD, 0xFFF0, 0x9000}, Limit::ReturnAddress, 0x10000},  // CM
    };
    for (const auto& [attempt, reason, operand] : attempts) {
        SCOPED_TRACE(FormatHexByte(attempt.Opcode) + " at " + FormatHexLong(attempt.PC));
        MachineState machine = MachineFor(attempt);
        const MachineState before = machine;
        machine.ExecuteInstruction();
        EXPECT_TRUE(SameState(machine, before));
        EXPECT_EQ(machine.Refused.Reason, reason);
        EXPECT_EQ(machine.Refused.PC, attempt.PC);
        EXPECT_EQ(machine.Refused.Opcode, reason == Limit::Fetch ? 0 : attempt.Opcode);
        EXPECT_EQ(machine.Refused.Operand, operand);
    }
}

TEST(Refusal, SparesWhatStillFits) {
    struct Allowed {
        Attempt Tried;
        std::int32_t NextPC;
        std::int32_t NextSP;
    };
    const Allowed attempts[] = {
        {{0xC5, 0x8000, 2}, 0x8001, 0},                    // PUSH B to the lowest two bytes
        {{0xC5, 0x8000, 0x10000}, 0x8001, 0xFFFE},         // and to the highest
        {{0xCD, 0x8000, 2, 0x9000}, 0x9000, 0},            // CALL
        {{0xC1, 0x8000, 0xFFFE}, 0x8001, 0x10000},         // POP B
        {{0xC9, 0x8000, 0xFFFE}, 0, 0x10000},              // RET
        {{0xE3, 0x8000, 0xFFFE}, 0x8001, 0xFFFE},          // XTHL
        {{0xC4, 0xFFFD, 0, 0x9000}, 0x10000, 0},           // CNZ, not called
        {{0xC0, 0x8000, 0x10000}, 0x8001, 0x10000},        // RNZ, not returning
        {{0x2A, 0x8000, 0xFFF0, 0xFFFE}, 0x8003, 0xFFF0},  // LHLD
        {{0xC3, 0xFFFD, 0xFFF0, 0x9000}, 0x9000, 0xFFF0},  // JMP
    };
    for (const auto& [attempt, nextPC, nextSP] : attempts) {
        SCOPED_TRACE(FormatHexByte(attempt.Opcode) + " at " + FormatHexLong(attempt.PC));
        MachineState machine = MachineFor(attempt);
        machine.ExecuteInstruction();
        EXPECT_EQ(machine.Refused.Reason, Limit::None);
        EXPECT_EQ(machine.PC, nextPC);
        EXPECT_EQ(machine.SP, nextSP);
    }
}

}  // namespace m8085
