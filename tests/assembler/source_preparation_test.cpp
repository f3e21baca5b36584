#include "assembler/source_preparation.h"

#include <gtest/gtest.h>

namespace assembler {

TEST(SourcePreparation, SplitsBehindEveryColonThatDoesNotEndItsLine) {
    const std::pair<std::u16string_view, std::vector<std::size_t>> texts[] = {
        {u"START: MVI A,5", {7}}, {u"LOOP:  \r\nNOP", {}}, {u"LOOP:\tNOP", {5}}, {u"A: B:", {3, 5}},
        {u"A::B", {2, 3}},        {u"; note: hello", {8}}, {u"A:\nNOP", {2}},
    };
    for (const auto& [text, splits] : texts) EXPECT_EQ(FindLabelSplits(text), splits);
}

}  // namespace assembler
