#include "editor/syntax_colouring.h"

#include <gtest/gtest.h>

#include <string>

namespace editor {

namespace {

// One letter for each character: "." plain, "m" mnemonic, "c" comment, "M" mnemonic within a comment.
std::string Picture(std::u16string_view text) {
    std::string picture(text.size(), '.');
    for (const ColouredSpan& span : ApplyColorCode(text))
        for (std::size_t i = 0; i < span.Length; ++i)
            picture[span.Start + i] = span.Mnemonic ? (span.Comment ? 'M' : 'm') : 'c';
    return picture;
}

}  // namespace

TEST(SyntaxColouring, MnemonicsAreWholeWordsInEitherCase) {
    EXPECT_EQ(Picture(u"mov MOV Mov"), "mmm.mmm.mmm");
    EXPECT_EQ(Picture(u"LDAX LDA ADDER ADD_1 1ADD"), "mmmm.mmm.................");
    EXPECT_EQ(Picture(u"mvi a,cc"), "mmm...mm");
    EXPECT_EQ(Picture(u"CALL:jmp:LOOP"), "mmmm.mmm.....");
    EXPECT_EQ(Picture(u"RST EI DI RIM SIM OUT"), "..................mmm");
    EXPECT_EQ(Picture(u"\u00E9add \u201Cadd\u201D"), "......mmm.");
}

TEST(SyntaxColouring, ACommentRunsToTheLineEndAndKeepsItsMnemonicsBold) {
    EXPECT_EQ(Picture(u"nop ;a nop b\r\nhlt"), "mmm.cccMMMcc..mmm");
    EXPECT_EQ(Picture(u";a;hlt\r\n;b"), "cccMMM..cc");
    EXPECT_EQ(Picture(u"nop;nop"), "mmmcMMM");
    EXPECT_EQ(Picture(u";"), "c");
    EXPECT_EQ(Picture(u";\r\n"), "c..");
}

TEST(SyntaxColouring, ColouringLineByLineGivesTheColoursOfTheWholeText) {
    const std::u16string text = u"start: mvi a,5 ; five\r\n; all comment hlt\r\n\r\nloop: dcr a\r\njnz loop;x\r\nhlt";
    std::string lineByLine;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(u"\r\n", start), text.size());
        lineByLine += Picture(std::u16string_view(text).substr(start, end - start)) + "..";
        start = end + 2;
    }
    EXPECT_EQ(lineByLine, Picture(text) + "..");
}

}  // namespace editor
