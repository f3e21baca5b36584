#include "panels/column_list.h"

#include <gtest/gtest.h>

#include <map>

namespace panels {

using Texts = std::vector<std::string>;

TEST(ColumnList, AddKeepsTheTextAsTypedAndTellsWhyItRefuses) {
    ColumnList list;
    for (const char* start : {"fe00", "FEFF", "000000008000"}) EXPECT_EQ(list.Add(start), AddResult::Added);
    for (const char* outside : {"FF00", "10000", "FFFFFFFFFFFFFFFFF", "-1", "-0"})
        EXPECT_EQ(list.Add(outside), AddResult::OutOfRange) << outside;
    for (const char* other : {"", "-", "--1", "xyz", "80 00", " 8000", "0x80", "80\xC3\xA9"})
        EXPECT_EQ(list.Add(other), AddResult::NoNumber) << other;
    EXPECT_EQ(list.Options(), "8000, 9000, 9100, fe00, FEFF, 000000008000");
    EXPECT_EQ(list.StartAddress(3), 0xFE00);
    EXPECT_EQ(list.StartAddress(5), 0x8000);
}

TEST(ColumnList, RemoveTakesTheFirstEntryWithExactlyThisText) {
    ColumnList list;
    list.Add("fe00");
    list.Add("9000");
    for (const char* other : {"FE00", "09000", "", "8000, 9000"}) EXPECT_FALSE(list.Remove(other)) << other;
    EXPECT_TRUE(list.Remove("9000"));
    EXPECT_EQ(list.Options(), "8000, 9100, fe00, 9000");
}

TEST(ColumnList, AFullListCanNeitherGrowNorShrinkAndAnEmptyOneOnlyGrow) {
    ColumnList list;
    while (list.CanAdd()) list.Add("1000");
    EXPECT_EQ(list.ColCount(), 51);
    EXPECT_EQ(list.Add("1000"), AddResult::Full);
    EXPECT_FALSE(list.CanRemove() || list.Remove("1000"));
    list = ColumnList();
    for (const char* start : {"8000", "9000", "9100"}) EXPECT_TRUE(list.Remove(start));
    EXPECT_FALSE(list.CanRemove());
}

TEST(ColumnList, ComesBackFromItsStoredTexts) {
    const auto restored = [](std::string_view count, const std::map<int, std::string>& store) {
        const auto stored = [&store](int index, const std::string& fallback) {
            return store.contains(index) ? store.at(index) : fallback;
        };
        return ColumnList::Restored(count, stored).ColumnStarts();
    };
    const std::map<int, std::string> five{{0, "0"}, {1, "fe00"}, {2, "FEFF"}, {3, "a"}, {4, "9000"}};
    EXPECT_EQ(restored("5", five), (Texts{"0", "fe00", "FEFF", "a", "9000"}));
    EXPECT_EQ(restored("0", five), Texts());
    EXPECT_EQ(restored("3", {}), (Texts{"8000", "9000", "9100"}));
    for (const char* damaged : {"", "abc", "-1", "52", "99999999999", "4.5"})
        EXPECT_EQ(restored(damaged, five), (Texts{"0", "fe00", "FEFF"})) << damaged;
    EXPECT_EQ(restored("6", {{0, "FF00"}, {1, "zz"}, {2, ""}, {3, "-5"}, {4, "1234"}}),
              (Texts{"8000", "9000", "9100", "1234"}));
}

}  // namespace panels
