#include "assembler/instruction_table.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace assembler {

namespace {

std::string_view Row(int row) {
    return InstructionTable.substr(static_cast<std::size_t>(row * InstructionRowLength), InstructionRowLength);
}

}  // namespace

TEST(InstructionTable, HoldsEveryInstructionOnceInItsOrder) {
    ASSERT_EQ(InstructionTable.size(), 4914U);
    EXPECT_EQ(Row(0), "7C MOV  A   H   1  \r\n");
    EXPECT_EQ(Row(233), "7B MOV  A   E   1  \r\n");
    std::set<int> seen;
    std::map<char, int> rowsOfGroup;
    for (int row = 0; row < InstructionRows; ++row) {
        const int anchor = FirstAnchor + row * InstructionRowLength;
        EXPECT_TRUE(row == 0 || OpcodeAt(anchor) > OpcodeAt(anchor - InstructionRowLength) || OpcodeAt(anchor) == 0x00)
            << Row(row);
        seen.insert(OpcodeAt(anchor));
        ++rowsOfGroup[Row(row)[16]];
    }
    EXPECT_EQ(seen.size(), 234U);
    EXPECT_EQ(rowsOfGroup, (std::map<char, int>{{'1', 95}, {'2', 69}, {'3', 38}, {'4', 28}, {'5', 4}}));
}

}  // namespace assembler
