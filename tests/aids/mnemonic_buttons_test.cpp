#include "aids/mnemonic_buttons.h"

#include <gtest/gtest.h>

#include "editor/mnemonic_list.h"

namespace aids {

TEST(MnemonicButtons, StandInRowsOfSixUnderTheirGroups) {
    const MnemonicLayout layout = LayOutMnemonics(editor::MnemonicList);
    ASSERT_EQ(layout.Buttons.size(), 75U);
    const auto expectAt = [&layout](std::size_t index, std::string_view word, int left, int top) {
        EXPECT_EQ(layout.Buttons[index].Word, word);
        EXPECT_EQ(layout.Buttons[index].Place.Left, left) << word;
        EXPECT_EQ(layout.Buttons[index].Place.Top, top) << word;
    };
    expectAt(0, "LDA", 100, 600);
    expectAt(5, "MVI", 3600, 600);
    expectAt(6, "POP", 100, 980);
    expectAt(13, "XTHL", 800, 1360);
    expectAt(14, "ACI", 100, 2060);
    expectAt(31, "SUI", 3600, 2820);
    expectAt(32, "ANA", 100, 3520);
    expectAt(43, "CALL", 100, 4600);
    expectAt(44, "CC", 800, 4600);
    expectAt(70, "PCHL", 2200, 6120);
    expectAt(74, "OUT", 2200, 6820);

    const int captionTops[] = {360, 1760, 3220, 4300, 6520};
    ASSERT_EQ(layout.Captions.size(), std::size(captionTops));
    for (std::size_t i = 0; i < layout.Captions.size(); ++i) {
        EXPECT_EQ(layout.Captions[i].Left, i == 0 ? 120 : 100);
        EXPECT_EQ(layout.Captions[i].Top, captionTops[i]);
    }
}

}  // namespace aids
