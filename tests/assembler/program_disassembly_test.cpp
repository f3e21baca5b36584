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
using Stretches = std::vector<m8085::MemoryStretch>;

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
    const Bytes toItsEnd = {0xC3, 0x03, 0x80};
    for (const Bytes& bytes : {all, Bytes{}, Jumps(100), Bytes{0xC3, 0x04, 0x80, 0x00, 0x76}, toItsEnd}) {
        const DisassembledProgram program = DisassembleProgram(Stretches{{m8085::ProgramOrigin, bytes}});
        EXPECT_TRUE(program.Obstacles.empty());
        EXPECT_EQ(Assembled(program.Text), bytes);
    }
    EXPECT_EQ(DisassembleProgram(Stretches{{0x2000, {0xC3, 0x00, 0x20}}}).Text,
              "; for velmora-run --origin 2000\nL2000:\nJMP L2000\n");
}

TEST(ProgramDisassembly, SaysWhatStandsInTheWay) {
    Bytes lastIsALabel = Jumps(98);
    lastIsALabel.insert(lastIsALabel.begin(), {0xCD, 0x29, 0x81});
    lastIsALabel.push_back(0x76);
    const std::tuple<Stretches, std::string> programs[] = {
        {{{0x2000, {0x00, 0xCB, 0x76}}}, "2001 - CB is not an instruction"},
        {{{0x2000, {0x00, 0xFF, 0xFF, 0xFF}}}, "2001 to 2003 - FF is not an instruction"},
        {{{0x8000, {0x76, 0x3E}}}, "8001 - the bytes end inside an instruction"},
        {{{0x8000, {0xC3, 0x01, 0x80}}}, "8000 - JMP goes to 8001, where no instruction of the program begins"},
        {{{0x8000, {0x76}}, {0x8003, {0xC3, 0x00, 0x80}}}, "8001 to 8002 - there are no bytes"},
        {{{0xFFFF, {0x00, 0x00}}}, "the bytes beyond FFFF are left out"},
        {{{0x8000, Jumps(101)}}, "it has 102 labels, jumps and calls, more than a program may have"},
        {{{0x8000, lastIsALabel}}, "it has 101 labels, jumps and calls, more than a program may have"},
        {{{0x8000, Bytes(6554)}},
         "The program is too long to assemble: it has 32770 characters, and at most 32765 can be "
         "assembled. A line end counts as two."},
    };
    for (const auto& [stretches, obstacle] : programs)
        EXPECT_EQ(DisassembleProgram(stretches).Obstacles, std::vector{obstacle});
    EXPECT_EQ(DisassembleProgram(Stretches{{0x8000, {0x00, 0xCB, 0x76}}}).Text,
              "NOP\n; 8001 - CB is not an instruction\nHLT\n");
}

}  // namespace assembler
