#include "assembler/instruction_words.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

#include "assembler/disassembly.h"
#include "assembler/instruction_table.h"
#include "assembler/mnemonic_list.h"
#include "support/test_rig.h"

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

TEST(Disassembly, AssemblesToTheSameBytes) {
    const auto text = [](std::array<std::uint8_t, 3> bytes) { return Disassemble(bytes); };
    EXPECT_EQ(text({0x21, 0x0F, 0x90}), "LXI H,900F");
    EXPECT_EQ(text({0xC2, 0x05, 0x80}), "JNZ 8005");
    EXPECT_EQ(text({0xF1, 0, 0}), "POP PSW");
    EXPECT_EQ(text({0x31, 0xF0, 0xFF}), "LXI SP,FFF0");
    for (int opcode = 0; opcode < 256; ++opcode) {
        const auto code = static_cast<std::uint8_t>(opcode);
        const InstructionRow* row = FindInstruction(code);
        const std::string line = text({code, 0xA5, 0x0C});
        EXPECT_EQ(line.empty(), row == nullptr);
        support::TestRig rig;
        rig.Assemble(std::u16string(line.begin(), line.end()) + u"\r\nhlt\r\n0ca5:");
        const auto length = static_cast<std::size_t>(InstructionLength(code));
        if (row == nullptr || row->TakesLabel()) continue;
        EXPECT_EQ(rig.machine.Memory[0x8000], code) << line;
        EXPECT_EQ(rig.machine.Memory[0x8000 + length], 0x76) << line;
        EXPECT_EQ(rig.machine.Memory[0x8000 + length - 1],
                  (std::array{code, std::uint8_t{0xA5}, std::uint8_t{0x0C}}[length - 1]));
    }
}

}  // namespace assembler
