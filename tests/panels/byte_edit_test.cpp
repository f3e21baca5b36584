#include <gtest/gtest.h>

#include "panels/byte_editor.h"
#include "panels/register_edit.h"

namespace panels {

TEST(RegisterEdit, LetsHexadecimalDigitsAndBackspaceIn) {
    for (const int code : std::initializer_list<int>{'0', '9', 'A', 'F', 'a', 'f', 8})
        EXPECT_TRUE(ValidateInput(code)) << code;
    for (const int code : std::initializer_list<int>{0, 1, 3, 13, 22, 24, 27, 127, -1, ' ', 'g', 'G', 0x661, 0xFF11})
        EXPECT_FALSE(ValidateInput(code)) << code;
}

TEST(RegisterEdit, TheFirstTwoCharactersMakeTheRegister) {
    EXPECT_EQ(ReadRegisterText(u""), 0);
    EXPECT_EQ(ReadRegisterText(u"a"), 10);
    EXPECT_EQ(ReadRegisterText(u"1FF"), 0x1F);
    EXPECT_EQ(ReadRegisterText(u"ffzz"), 0xFF);
    for (const char16_t* other : {u"g", u"5g", u" 5", u"-1", u"\u0661\u0662"})
        EXPECT_EQ(ReadRegisterText(other), std::nullopt);
}

TEST(ByteEditor, TakesADigitWhereOneOfTwoIsFreeOrSelected) {
    EXPECT_TRUE(AcceptsEditorKey('3', 0, 0));
    EXPECT_TRUE(AcceptsEditorKey('a', 1, 0));
    EXPECT_TRUE(AcceptsEditorKey('F', 2, 1));
    EXPECT_FALSE(AcceptsEditorKey('3', 2, 0));
    EXPECT_TRUE(AcceptsEditorKey(Backspace, 2, 0));
    EXPECT_FALSE(AcceptsEditorKey('g', 0, 0));
    EXPECT_FALSE(AcceptsEditorKey(13, 2, 2));
}

TEST(ByteEditor, InsertedTextIsCutToWhatTypingItWouldHaveLeft) {
    EXPECT_EQ(CutInsertedText(u"1FFx", 4), u"1F");
    EXPECT_EQ(CutInsertedText(u"xyz a\nB", 7), u"aB");
    EXPECT_EQ(CutInsertedText(u"3A4", 3), u"3A");
    EXPECT_EQ(CutInsertedText(u"43A", 1), u"3A");
    EXPECT_EQ(CutInsertedText(u"34A", 2), u"3A");
    EXPECT_EQ(CutInsertedText(u"zz", 2), u"");
}

TEST(ByteEditor, AnEmptyTextIsNoByte) {
    EXPECT_EQ(ReadEditorText(u""), std::nullopt);
    EXPECT_EQ(ReadEditorText(u"5"), 5);
    EXPECT_EQ(ReadEditorText(u"aF"), 0xAF);
}

}  // namespace panels
