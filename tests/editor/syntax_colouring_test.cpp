#include "editor/syntax_colouring.h"

#include <gtest/gtest.h>

#include <string>

using namespace std::string_literals;

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
    for (const char16_t letter : u"z_9\u00AA\u00B5\u00BA\u00C0\u00D8\u1FFF\u2C00\u2FFF\u3040\uD7FF\uE000"s)
        EXPECT_EQ(Picture(letter + u"add"s), "....") << std::hex << int{letter};
    for (const char16_t sign :
         u"\u0080\u00BF\u00D7\u00F7\u2000\u2BFF\u3000\u303F"s + char16_t{0xD800} + char16_t{0xDFFF})
        EXPECT_EQ(Picture(u"add"s + sign), "mmm.") << std::hex << int{sign};
}

TEST(SyntaxColouring, ACommentRunsToTheLineEndAndKeepsItsMnemonicsBold) {
    EXPECT_EQ(Picture(u"nop ;a nop b"), "mmm.cccMMMcc");
    EXPECT_EQ(Picture(u";a;hlt"), "cccMMM");
    EXPECT_EQ(Picture(u"nop;nop"), "mmmcMMM");
}

}  // namespace editor
