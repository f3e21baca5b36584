#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <vector>

#include "support/machine_support.h"
#include "support/workbench.h"

namespace {

using support::Workbench;

std::u16string ReadExample(const std::string& name) {
    std::ifstream file(VELMORA_EXAMPLES "/" + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Assembles the program and runs it to its end, on a machine whose registers and flags an earlier program has left set.
Workbench RunExample(const std::string& name, int firstPort = 0) {
    SCOPED_TRACE(name);
    Workbench bench{support::MachineWith({}), {}};
    support::SetAllFlags(bench.machine, true);
    bench.machine.Ports[1] = support::Byte(firstPort);
    const std::u16string source = ReadExample(name);
    EXPECT_TRUE(bench.Assemble(source).Succeeded);
    EXPECT_TRUE(assembler::FindLabelSplits(source).empty()) << "Assemble would change the text";
    bool ended = false;
    execution::RunView view = support::SilentView();
    view.ShowEndMessage = [&](const std::string&) { ended = true; };
    execution::RunControl(bench.machine, bench.codeMap, view).RunProgram();
    EXPECT_TRUE(ended);
    return bench;
}

}  // namespace

TEST(Examples, ComeToTheirResults) {
    const auto bytes = [](const std::string& name, int address, int count) {
        const Workbench bench = RunExample(name);
        const auto first = bench.machine.Memory.begin() + address;
        return std::vector<int>(first, first + count);
    };
    using Expected = std::vector<int>;
    EXPECT_EQ(bytes("sum_of_bytes.asm", 0x9100, 2), (Expected{0x3C, 0x02}));
    EXPECT_EQ(bytes("block_move.asm", 0x9100, 17),
              (Expected{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 0}));
    EXPECT_EQ(bytes("bubble_sort.asm", 0x9000, 8), (Expected{0x00, 0x07, 0x13, 0x42, 0x42, 0x80, 0x99, 0xFF}));
    EXPECT_EQ(bytes("multiply.asm", 0x9100, 2), (Expected{24600 % 256, 24600 / 256}));
    EXPECT_EQ(bytes("decimal_addition.asm", 0x9100, 5), (Expected{0x75, 0x80, 0x93, 0x06, 0x01}));
}

TEST(Examples, PortEchoTakesTheUsersByteOrItsOwn) {
    for (const auto& [typed, echoed] : {std::pair{0x00, 0x2A}, {0x17, 0x17}}) {
        const Workbench bench = RunExample("port_echo.asm", typed);
        EXPECT_EQ(bench.machine.Ports[2], echoed);
        EXPECT_EQ(bench.machine.Ports[3], 0xFF - echoed);
    }
}
