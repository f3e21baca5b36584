#include "assembler/source_preparation.h"

#include <gtest/gtest.h>

namespace assembler {

TEST(SourcePreparation, SplitsBehindEveryColonThatDoesNotEndItsLine) {
    const std::pair<std::u16string_view, std::vector<std::size_t>> texts[] = {
        {u"", {}},
        {u"NOP\r\nRET", {}},
        {u"START: MVI A,5", {7}},
        {u"LOOP:\r\nNOP", {}},
        {u"LOOP:  \r\nNOP", {}},
        {u"LOOP:\tNOP", {5}},
        {u"LOOP: ;again", {6}},
        {u"A: B:", {3, 5}},
        {u"A::B", {2, 3}},
        {u"; note: hello", {8}},
        {u"A:\nNOP", {2}},
    };
    for (const auto& [text, splits] : texts) EXPECT_EQ(FindLabelSplits(text), splits);
}

TEST(SourcePreparation, EveryLineEndsInALineFeed) {
    EXPECT_EQ(ConvertLineEnds(u""), u"\n");
    EXPECT_EQ(ConvertLineEnds(u"A\r\n\r\nB\r\n"), u"A\n \n B\n \n");
    EXPECT_EQ(PrepareProgram(u"A: B:NOP\r\n; x: y").Text, u"A: \n B:\n NOP\n ; x: \n y\n");
}

}  // namespace assembler
