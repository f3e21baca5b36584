#include "assembler/instruction_words.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

#include "assembler/disassembly.h"
#include "assembler/instruction_table.h"
#include "assembler/mnemonic_list.h"
#include "machine/machine_state.h"

namespace assembler {

TEST(InstructionWords, NameTheFlagsThatTheMachineChanges) {
    constexpr std::string_view names[] = {"S", "Z", "", "AC", "", "P", "", "CY"};
    std::mt19937 random(8085);
    const auto byte = [&random] { return static_cast<std::uint8_t>(random()); };
    std::map<std::pair<std::string_view, std::string_view>, int> changedBy;  // mnemonic, and the flags said of it
    for (int round = 0; round < 400 * 256; ++round) {
        static m8085::MachineState machine;
        const auto opcode = static_cast<std::uint8_t>(round);
        const InstructionRow* row = FindInstruction(opcode);
        if (row == nullptr) continue;
        machine.SetPSW(static_cast<std::uint16_t>(random()));
        for (std::uint8_t code = 0; code < 8; ++code) machine.SetReg(code, byte());
        machine.PC = 0x8000;
        machine.SP = 0x9000;
        machine.Memory[0x8000] = opcode;
        for (const std::size_t address : {0x8001, 0x9000, 0x9001}) machine.Memory[address] = byte();
        const int before = machine.GetFlagByte();
        machine.ExecuteInstruction();
        changedBy[{row->Mnemonic, FlagsChangedBy(opcode)}] |= before ^ machine.GetFlagByte();
    }
    for (const auto& [said, changed] : changedBy) {
        std::string flags;
        for (int bit = 7; bit >= 0; --bit)
            if ((changed >> bit & 1) != 0) flags += (flags.empty() ? "" : " ") + std::string(names[7 - bit]);
        EXPECT_EQ(said.second, flags) << said.first;
    }
    EXPECT_EQ(changedBy.size(), Mnemonics.size() + 1) << "one a mnemonic, and two for POP";
    EXPECT_EQ(TimeOf(0x08), (InstructionTime{0, 0}));  // the guide's tables have the others
}

// All others are assembled again with the programs that they stand in.
TEST(Disassembly, NamesPairsAndAddressesInFull) {
    using Bytes = std::array<std::uint8_t, 3>;
    for (const auto& [bytes, text] : {std::pair{Bytes{0x21, 0x0F, 0x90}, "LXI H,900F"},
                                      {{0xC2, 0x05, 0x80}, "JNZ 8005"},
                                      {{0xF1, 0x00, 0x00}, "POP PSW"},
                                      {{0x31, 0xF0, 0xFF}, "LXI SP,FFF0"},
                                      {{0xCB, 0x00, 0x00}, ""}})
        EXPECT_EQ(Disassemble(bytes), text);
}

}  // namespace assembler
