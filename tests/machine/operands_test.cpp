#include <gtest/gtest.h>

#include "support/machine_support.h"

namespace m8085 {

TEST(Operands, CodesNameTheirRegistersAndMChargesThreeTStates) {
    MachineState machine;
    std::uint8_t* const registers[] = {
        &machine.B, &machine.C, &machine.D, &machine.E, &machine.H, &machine.L, &machine.Memory[0x9495], &machine.A};
    for (std::uint8_t code = 0; code < 8; ++code) {
        machine.SetReg(code, support::Byte(0x90 + code));
        EXPECT_EQ(*registers[code], 0x90 + code);
        EXPECT_EQ(machine.GetReg(code), 0x90 + code);
    }
    EXPECT_EQ(machine.TStates, 6);
}

}  // namespace m8085
