#include <gtest/gtest.h>

#include "panels/byte_editor.h"
#include "panels/register_edit.h"

namespace panels {

TEST(ByteEdit, LetsHexadecimalDigitsAndBackspaceIn) {
    for (const int code : std::initializer_list<int>{'0', '9', 'A', 'F', 'a', 'f', 8})
        EXPECT_TRUE(ValidateInput(code)) << code;
    for (const int code : std::initializer_list<int>{0, 1, 3, 13, 22, 24, 27, 127, -1, ' ', 'g', 'G', 0x661, 0xFF11})
        EXPECT_FALSE(ValidateInput(code)) << code;
    EXPECT_TRUE(AcceptsEditorKey('F', 2, 1));
    EXPECT_FALSE(AcceptsEditorKey('3', 2, 0));
    EXPECT_TRUE(AcceptsEditorKey(Backspace, 2, 0));
    EXPECT_FALSE(AcceptsEditorKey('g', 0, 0));
}

TEST(ByteEdit, TheFirstTwoCharactersMakeTheRegister) {
    EXPECT_EQ(ReadRegisterText(u""), 0);
    EXPECT_EQ(ReadRegisterText(u"a"), 10);
    EXPECT_EQ(ReadRegisterText(u"1FF"), 0x1F);
    for (const char16_t* other : {u"g", u"5g", u" 5", u"-1"}) EXPECT_EQ(ReadRegisterText(other), std::nullopt);
    EXPECT_EQ(ReadEditorText(u""), std::nullopt);
}

TEST(ByteEdit, TextInsertedInTheEditorIsCutToWhatTypingItWouldHaveLeft) {
    EXPECT_EQ(CutInsertedText(u"xyz a\nBC", 8), u"aB");
    EXPECT_EQ(CutInsertedText(u"3A4", 3), u"3A");
    EXPECT_EQ(CutInsertedText(u"43A", 1), u"3A");
    EXPECT_EQ(CutInsertedText(u"34A", 2), u"3A");
}

}  // namespace panels
