#include <gtest/gtest.h>

#include "panels/byte_text.h"
#include "panels/column_list.h"
#include "panels/tips.h"

namespace panels {

TEST(ByteEdit, WhatIsInsertedIsCutToWhatTypingWouldHaveLeft) {
    EXPECT_EQ(CutInsertedText(u"", u"xyz a\n0C", 8), u"a0");
    EXPECT_EQ(CutInsertedText(u"3A", u"43A", 1), u"3A");
    EXPECT_EQ(CutInsertedText(u"3A", u"3g", 2), std::nullopt) << "typing a g over the A would have left it";
}

TEST(ColumnList, KeepsEachTextAsTypedUntilItIsFull) {
    ColumnList list;
    for (const char* start : {"fe00", "FEFF", "9000"}) EXPECT_EQ(list.Add(start), AddResult::Added);
    for (const char* outside : {"FF00", "FFFFFFFFFFFFFFFFF", "-1"}) EXPECT_EQ(list.Add(outside), AddResult::OutOfRange);
    for (const char* other : {"", "-", "xyz", " 8000", "0x80"}) EXPECT_EQ(list.Add(other), AddResult::NoNumber);
    for (const char* other : {"FE00", "09000", ""}) EXPECT_FALSE(list.Remove(other)) << other;
    EXPECT_TRUE(list.Remove("9000"));
    EXPECT_EQ(list.Options(), "8000, 9100, fe00, FEFF, 9000");

    while (list.CanAdd()) list.Add("1000");
    EXPECT_EQ(list.ColCount(), 51);
    EXPECT_EQ(list.Add("1000"), AddResult::Full);
    EXPECT_FALSE(list.CanRemove() || list.Remove("1000"));
}

TEST(Tips, SayAValueInItsOtherForms) {
    EXPECT_EQ(ByteTip(127), "Binary 0111 1111, decimal 127");
    EXPECT_EQ(NumberTip(' ', 8), "Binary 0010 0000, decimal 32");
    EXPECT_EQ(StoredByteTip('~'), "Byte 7E, binary 0111 1110, decimal 126, character ~");
    EXPECT_EQ(StoredByteTip(0x7F), "Byte 7F, binary 0111 1111, decimal 127");
    EXPECT_EQ(TimeTip(40) + '|' + TimeTip(4), "13 microseconds, at 0.325 each|1.3 microseconds, at 0.325 each");
    const auto changes = std::make_unique<m8085::Changes>();
    std::fill_n(changes->Memory.begin() + 0x8000, 11, true);
    const auto machine = std::make_unique<m8085::MachineState>();
    EXPECT_TRUE(DescribeChanges(*changes, *machine).ends_with("memory 8007 00, 3 more bytes of memory"))
        << DescribeChanges(*changes, *machine);
    machine->SP = 0xFFF8;
    EXPECT_TRUE(StackTip(*machine).ends_with("Word 0000 at FFFE"));
    machine->SP = 0xFFF6;
    EXPECT_TRUE(StackTip(*machine).ends_with("Word 0000 at FFFC"));
}

}  // namespace panels
