#include <gtest/gtest.h>

#include <map>

#include "panels/byte_editor.h"
#include "panels/memory_snapshot.h"

namespace panels {

TEST(ByteEdit, WhatIsInsertedIsCutToWhatTypingWouldHaveLeft) {
    EXPECT_EQ(CutInsertedText(u"", u"xyz a\nBC", 8), u"aB");
    EXPECT_EQ(CutInsertedText(u"3A", u"43A", 1), u"3A");
    EXPECT_EQ(CutInsertedText(u"3A", u"34A", 2), u"3A");
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

TEST(ColumnList, ComesBackFromItsStoredTexts) {
    const auto restored = [](std::string_view count, const std::map<int, std::string>& store) {
        const auto stored = [&store](int index, const std::string& fallback) {
            return store.contains(index) ? store.at(index) : fallback;
        };
        return ColumnList::Restored(count, stored).Options();
    };
    const std::map<int, std::string> five{{0, "0"}, {1, "fe00"}, {2, "FEFF"}, {3, "a"}, {4, "9000"}};
    EXPECT_EQ(restored("5", five), "0, fe00, FEFF, a, 9000");
    EXPECT_EQ(restored("0", five), "");
    for (const char* damaged : {"", "abc", "-1", "52", "4.5"}) EXPECT_EQ(restored(damaged, five), "0, fe00, FEFF");
    EXPECT_EQ(restored("6", {{0, "FF00"}, {1, "zz"}, {3, "-5"}, {4, "1234"}}), "8000, 9000, 9100, 1234");
}

TEST(MemorySnapshot, TellsWhichCellsHaveChangedTwinsIncluded) {
    m8085::MachineState machine;
    ColumnList list;
    list.Add("80FF");
    MemorySnapshot cells;
    cells.FormatFor(list);
    machine.Memory[0x91FF] = machine.Ports[0] = machine.Memory[0x80FF] = 1;
    EXPECT_EQ(cells.TakeFrom(machine).size(), 4u);
    EXPECT_EQ(cells.Store(machine, {0, 7}, 2).size(), 2u);
    EXPECT_EQ(cells.Byte({255, 1}) + machine.Memory[0x80FF] + machine.Ports[0], 2 + 2 + 1);
}

}  // namespace panels
