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

TEST(InstructionTable, FindsByMnemonicAndByTheBeginningOfOperands) {
    const auto opcode = [](auto... words) {
        const int anchor = FindInstruction(words...);
        return anchor == NoAnchor ? -1 : int{OpcodeAt(anchor)};
    };
    const std::pair<std::u16string_view, int> mnemonics[] = {
        {u"CP", 0xF4}, {u"CPE", 0xEC}, {u"CPI", 0xFE},  {u"JP", 0xF2}, {u"JPE", 0xEA}, {u"RP", 0xF0}, {u"RPE", 0xE8},
        {u"IN", 0xDB}, {u"INR", 0x04}, {u"MOV", 0x7C},  {u"RST", -1},  {u"RIM", -1},   {u"SIM", -1},  {u"DI", -1},
        {u"EI", -1},   {u"B", -1},     {u"PSW", -1},    {u"I16", -1},  {u"", -1},      {u"mov", -1},  {u"PUSHX", -1},
        {u"MOVA", -1}, {u"MO", -1},    {u"PCHLXY", -1}, {u"OV", -1}};
    for (const auto& [mnemonic, expected] : mnemonics) EXPECT_EQ(opcode(mnemonic), expected);

    EXPECT_EQ(opcode(u"LXI", u"B"), 0x01);
    EXPECT_EQ(opcode(u"LXI", u"BC"), 0x01);
    EXPECT_EQ(opcode(u"PUSH", u"P"), 0xF5);
    EXPECT_EQ(opcode(u"STAX", u"H"), -1);
    EXPECT_EQ(opcode(u"LXI", u"BCD"), -1);
    EXPECT_EQ(opcode(u"MOV", u"A", u"B"), 0x78);
    EXPECT_EQ(opcode(u"MOV", u"AX", u"B"), 0x78);
    EXPECT_EQ(opcode(u"MOV", u"M", u"M"), -1);
}

}  // namespace assembler
