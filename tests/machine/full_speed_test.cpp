#include "machine/full_speed.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "support/machine_support.h"
#include "support/test_rig.h"

namespace m8085 {

// The lengths lie on both sides of 1000, at which a slice pauses for itself.
TEST(FullSpeed, ASliceEndsAtAnAddressWithNoLineAndKeepsTheLimitOfTStates) {
    constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
    for (const int lines : {0, 1, 7, 999, 1000, 1001, 2500})
        for (const int length : {1, 7, 1000, 1001, 3000})
            for (const std::int64_t tStates : {std::int64_t{0}, most - 30, most - 4001}) {
                support::TestRig rig;  // whose memory is full of NOPs
                rig.machine.TStates = static_cast<std::int32_t>(tStates);
                for (int address = 0; address < lines; ++address) rig.codeMap.SetLine(address, 1);
                ExecuteSlice(rig.machine, rig.codeMap, length);
                const int executed = std::max(1, std::min(lines, length));
                EXPECT_EQ(rig.machine.PC, executed) << lines << " lines, a slice of " << length;
                EXPECT_EQ(rig.machine.TStates, std::min(tStates + 4 * executed, most));
            }
}

TEST(FullSpeed, PCAndSPAreKeptWhereMemoryEnds) {
    support::TestRig rig;
    MachineState& machine = rig.machine;
    for (std::int32_t address = 0xFFF0; address < MemorySize; ++address) rig.codeMap.SetLine(address, 1);
    machine.Memory[0xFFFC] = 0xC1;  // POP BC; NOP
    machine.PC = 0xFFFC;
    machine.SP = 0xFFFE;
    ExecuteSlice(machine, rig.codeMap, 100);
    EXPECT_TRUE(machine.PC == 0xFFFE && machine.SP == 0x10000);

    machine.Memory[0xFFFD] = 0x01;  // LXI BC
    machine.PC = 0xFFFD;
    ExecuteSlice(machine, rig.codeMap, 100);
    EXPECT_TRUE(machine.PC == 0x10000 && machine.TStates == 24 && machine.Refused == Refusal());
    ExecuteSlice(machine, rig.codeMap, 100);
    EXPECT_TRUE((machine.Refused == Refusal{Limit::Fetch, 0x10000, 0, 0x10000}));
}

}  // namespace m8085
