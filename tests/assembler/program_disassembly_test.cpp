#include "assembler/program_disassembly.h"

#include <gtest/gtest.h>

#include <memory>
#include <tuple>

#include "assembler/disassembly.h"
#include "assembler/instruction_table.h"
#include "support/test_rig.h"

namespace assembler {

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes Assembled(const std::string& text) {
    const auto rig = std::make_unique<support::TestRig>();
    const Assembly assembly = rig->Assemble(std::u16string(text.begin(), text.end()));
    EXPECT_TRUE(assembly.Succeeded) << text;
    const auto origin = rig->machine.Memory.begin() + m8085::ProgramOrigin;
    return {origin, origin + (assembly.End - m8085::ProgramOrigin)};
}

// So many jumps to the first of them.
Bytes Jumps(std::size_t count) {
    Bytes bytes;
    for (std::size_t i = 0; i < count; ++i) bytes.insert(bytes.end(), {0xC3, 0x00, 0x80});
    return bytes;
}

}  // namespace

TEST(ProgramDisassembly, AssemblesToTheSameBytes) {
    Bytes all;
    for (const InstructionRow& row : InstructionRows()) {
        const Bytes instruction = {row.Opcode, 0x00, 0x80};
        all.insert(all.end(), instruction.begin(), instruction.begin() + InstructionLength(instruction[0]));
    }
    for (const Bytes& bytes : {all, Bytes{}, Jumps(100), Bytes{0xC3, 0x04, 0x80, 0x00, 0x76}}) {
        const DisassembledProgram program = DisassembleProgram(bytes, m8085::ProgramOrigin);
        EXPECT_TRUE(program.Obstacles.empty());
        EXPECT_EQ(Assembled(program.Text), bytes);
    }
}

TEST(ProgramDisassembly, SaysWhatStandsInTheWay) {
    Bytes lastIsALabel = Jumps(98);
    lastIsALabel.insert(lastIsALabel.begin(), {0xCD, 0x29, 0x81});
    lastIsALabel.push_back(0x76);
    const std::tuple<Bytes, int, std::string> programs[] = {
        {{0x00, 0xCB, 0x76}, 0x2000, "2001: CB is not an instruction"},
        {{0x76, 0x3E}, 0x8000, "8001: the program ends inside an instruction"},
        {{0xC3, 0x01, 0x80}, 0x8000, "8000: JMP goes to 8001, where no instruction of the program begins"},
        {{0x00, 0x00}, 0xFFFF, "the bytes beyond FFFF are left out"},
        {Jumps(101), 0x8000, "it has 102 labels, jumps and calls, more than a program may have"},
        {lastIsALabel, 0x8000, "it has 101 labels, jumps and calls, more than a program may have"},
    };
    for (const auto& [bytes, origin, obstacle] : programs)
        EXPECT_EQ(DisassembleProgram(bytes, origin).Obstacles, std::vector{obstacle});
    EXPECT_EQ(DisassembleProgram(Bytes{0x00, 0xCB}, 0).Text, "NOP\n; 0001 - CB is not an instruction\n");
}

}  // namespace assembler
