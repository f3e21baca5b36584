#include <gtest/gtest.h>

#include "panels/byte_text.h"
#include "panels/column_list.h"

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

}  // namespace panels
