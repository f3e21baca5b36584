#include "editor/syntax_colouring.h"

#include <gtest/gtest.h>

#include <string>

namespace editor {

namespace {

// One letter for each character: "." plain, "m" mnemonic, "c" comment, "M" mnemonic within a comment.
std::string Picture(std::u16string_view line) {
    std::string picture(line.size(), '.');
    for (const ColouredSpan& span : ApplyColorCode(line))
        for (std::size_t i = 0; i < span.Length; ++i)
            picture[span.Start + i] = span.Mnemonic ? (span.Comment ? 'M' : 'm') : 'c';
    return picture;
}

}  // namespace

TEST(SyntaxColouring, MnemonicsAreWholeWordsInEitherCase) {
    EXPECT_EQ(Picture(u"mov MOV Mov"), "mmm.mmm.mmm");
    EXPECT_EQ(Picture(u"LDAX LDA ADDER ADD_1 9ADD ADD0 ADDZ aADD"), "mmmm.mmm................................");
    EXPECT_EQ(Picture(u"mvi a,cc"), "mmm...mm");
    EXPECT_EQ(Picture(u"CALL:jmp:LOOP"), "mmmm.mmm.....");
    EXPECT_EQ(Picture(u"RST EI DI RIM SIM OUT"), "..................mmm");
    EXPECT_EQ(Picture(u"\u00E9add \u201Cadd\u201D"), "......mmm.");
}

TEST(SyntaxColouring, ACommentRunsToTheLineEndAndKeepsItsMnemonicsBold) {
    EXPECT_EQ(Picture(u"nop ;a nop b"), "mmm.cccMMMcc");
    EXPECT_EQ(Picture(u";a;hlt"), "cccMMM");
    EXPECT_EQ(Picture(u"nop;nop"), "mmmcMMM");
}

}  // namespace editor
