#include <gtest/gtest.h>

#include <tuple>

#include "support/machine_support.h"

namespace m8085 {

// Z, C, PE and M hold, the other conditions fail.
TEST(Refusal, ChangesNothingAndTellsTheReason) {
    // opcode, PC, SP, the word in the instruction, the reason, and the operand that was refused or the next PC
    const std::tuple<int, std::int32_t, std::int32_t, int, Limit, std::int32_t> attempts[] = {
        {0x00, 0xFFFE, 0xFFF0, 0, Limit::Fetch, 0xFFFE},                // NOP
        {0x00, 0x10000, 0xFFF0, 0, Limit::Fetch, 0x10000},              // NOP
        {0x00, -1, 0xFFF0, 0, Limit::Fetch, -1},                        // NOP
        {0x00, 0xFFFD, 0xFFF0, 0, Limit::None, 0xFFFE},                 // NOP
        {0x01, 0xFFFD, 0xFFF0, 0, Limit::None, 0x10000},                // LXI BC
        {0xC3, 0xFFFD, 0xFFF0, 0x9000, Limit::None, 0x9000},            // JMP
        {0xCD, 0xFFFD, 0xFFF0, 0x9000, Limit::ReturnAddress, 0x10000},  // CALL
        {0xFC, 0xFFFD, 0xFFF0, 0x9000, Limit::ReturnAddress, 0x10000},  // CM
        {0xC4, 0xFFFD, 0, 0x9000, Limit::None, 0x10000},                // CNZ, not called
        {0x2A, 0x8000, 0xFFF0, 0xFFFF, Limit::WordAddress, 0xFFFF},     // LHLD
        {0x2A, 0x8000, 0xFFF0, 0xFFFE, Limit::None, 0x8003},            // LHLD
        {0x22, 0x8000, 0xFFF0, 0xFFFF, Limit::WordAddress, 0xFFFF},     // SHLD
        {0xCD, 0x8000, 1, 0x9000, Limit::Push, 1},                      // CALL
        {0xCC, 0x8000, 0, 0x9000, Limit::Push, 0},                      // CZ
        {0xC5, 0x8000, 1, 0, Limit::Push, 1},                           // PUSH BC
        {0xC5, 0x8000, 2, 0, Limit::None, 0x8001},                      // PUSH BC
        {0xC5, 0x8000, 0x10000, 0, Limit::None, 0x8001},                // PUSH BC
        {0xC9, 0x8000, 0xFFFF, 0, Limit::Pop, 0xFFFF},                  // RET
        {0xC8, 0x8000, 0x10000, 0, Limit::Pop, 0x10000},                // RZ
        {0xC0, 0x8000, 0x10000, 0, Limit::None, 0x8001},                // RNZ, not returning
        {0xF1, 0x8000, 0xFFFF, 0, Limit::Pop, 0xFFFF},                  // POP PSW
        {0xF1, 0x8000, 0xFFFE, 0, Limit::None, 0x8001},                 // POP PSW
        {0xE3, 0x8000, 0xFFFF, 0, Limit::Pop, 0xFFFF},                  // XTHL
    };
    for (const auto& [opcode, pc, sp, word, reason, outcome] : attempts) {
        SCOPED_TRACE(testing::Message() << std::hex << opcode << " at " << pc << ", SP " << sp);
        MachineState machine = support::MachineWith({});
        machine.PC = pc;
        machine.SP = sp;
        support::SetAllFlags(machine, true);
        const int bytes[] = {opcode, word, word >> 8};
        for (int i = 0; i < 3 && pc >= 0 && pc + i < MemorySize; ++i)
            machine.Memory[static_cast<std::size_t>(pc + i)] = support::Byte(bytes[i]);
        const MachineState before = machine;
        machine.ExecuteInstruction();
        const Refusal expected{reason, pc, reason == Limit::Fetch ? std::uint8_t{0} : support::Byte(opcode), outcome};
        EXPECT_TRUE(machine.Refused == (reason == Limit::None ? Refusal{} : expected));
        if (reason == Limit::None) {
            EXPECT_EQ(machine.PC, outcome);
            continue;
        }
        machine.Refused = {};
        EXPECT_TRUE(machine == before);
    }
}

}  // namespace m8085
