#include "platform/program_text.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QSignalSpy>
#include <QTest>

namespace platform {

class ProgramTextTest : public testing::Test {
protected:
    ProgramTextTest() : changes(&text, &ProgramText::TextChanged) {
        text.show();
        text.setFocus();
    }

    ProgramText text{nullptr};
    QSignalSpy changes;
};

TEST_F(ProgramTextTest, EveryKindOfLineEndReadsBackAsCrLf) {
    text.SetText(u"a\r\nb\nc\rd");
    EXPECT_EQ(text.Text(), u"a\r\nb\r\nc\r\nd");
    EXPECT_EQ(text.Length(), 10);
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(ProgramTextTest, PositionsCountALineEndAsTwo) {
    text.SetText(u"ab\r\ncd\r\n\r\nef");
    const std::u16string all = text.Text();
    for (int position = 0; position <= text.Length(); ++position) {
        text.SetSelectionStart(position);
        const bool insideLineEnd = position > 0 && position < text.Length() && all[std::size_t(position)] == u'\n';
        EXPECT_EQ(text.SelectionStart(), insideLineEnd ? position - 1 : position);
    }
    text.SetSelectionStart(1);
    text.SetSelectionLength(5);
    EXPECT_EQ(text.SelectedText(), u"b\r\ncd");
    text.SetSelectionStart(1000);
    EXPECT_EQ(text.SelectionStart(), text.Length());
}

TEST_F(ProgramTextTest, ReplacingIsOneChangeAndLeavesTheCaretBehind) {
    text.SetText(u"mov a,b\r\nhlt");
    changes.clear();
    text.SetSelectionStart(4);
    text.SetSelectionLength(3);
    text.ReplaceSelection(u"m\r\na");
    EXPECT_EQ(text.Text(), u"mov m\r\na\r\nhlt");
    EXPECT_EQ(text.SelectionStart(), 8);
    EXPECT_EQ(changes.count(), 1);
    text.undo();
    EXPECT_EQ(text.Text(), u"mov a,b\r\nhlt");
}

TEST_F(ProgramTextTest, EveryInsertionIsAStepOfItsOwn) {
    QTest::keyClicks(&text, "ab");
    text.ReplaceSelection(u"c");
    text.ReplaceSelection(u"d");
    QApplication::clipboard()->setText(u"e\u00A0f\u2028\u2029"_qs);
    QTest::keyClick(&text, Qt::Key_Insert, Qt::ShiftModifier);
    text.InsertAt({1, 2}, u":");
    QTest::keyClicks(&text, "gh");
    const std::u16string steps[] = {u"ab", u"abc", u"abcd", u"abcde f\r\n\r\n", u"a:b:cde f\r\n\r\n"};
    for (auto step = std::rbegin(steps); step != std::rend(steps); ++step) {
        text.undo();
        EXPECT_EQ(text.Text(), *step);
    }
    QTest::keyClick(&text, Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(text.Text(), u"abc");
}

TEST_F(ProgramTextTest, WhatCanBeUndoneIsForgottenUnseenAndTheLatestStepNever) {
    text.SetText(u"nop\r\nhlt\r\nnop");
    text.InsertAt(std::vector<std::size_t>(30'000, 5), std::u16string(70, u'x') + u"\r\n");
    const std::u16string before = text.Text();
    changes.clear();
    text.SelectLine(30'002);
    text.ReplaceSelection(u"y");
    EXPECT_EQ(changes.count(), 1);
    text.undo();
    EXPECT_EQ(text.Text(), before);
    text.undo();
    EXPECT_EQ(text.Text(), before);
}

TEST_F(ProgramTextTest, ALetterWithAltTypesNothingUnlessItIsAltGr) {
    QTest::sendKeyEvent(QTest::Click, &text, Qt::Key_R, u'r', Qt::AltModifier);
    QTest::sendKeyEvent(QTest::Click, &text, Qt::Key_Q, u'@', Qt::AltModifier | Qt::ControlModifier);
    EXPECT_EQ(text.Text(), u"@");
}

TEST_F(ProgramTextTest, TabAndEnterDoTheSameWhateverTheShiftState) {
    text.SetText(u"ab");
    text.selectAll();
    QTest::keyClick(&text, Qt::Key_Tab);
    QTest::keyClick(&text, Qt::Key_Backtab, Qt::ShiftModifier);
    QTest::keyClick(&text, Qt::Key_Return);
    QTest::keyClick(&text, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(text.Text(), u"\t\t\r\n\r\n");
}

TEST_F(ProgramTextTest, InsertingInSeveralPlacesIsOneChange) {
    text.SetText(u"a:b:\r\nc:d");
    changes.clear();
    text.InsertAt({2, 4, 8}, u"\r\n");
    EXPECT_EQ(text.Text(), u"a:\r\nb:\r\n\r\nc:\r\nd");
    EXPECT_EQ(text.SelectionStart(), 14);
    EXPECT_EQ(changes.count(), 1);
    text.undo();
    EXPECT_EQ(text.Text(), u"a:b:\r\nc:d");
}

TEST_F(ProgramTextTest, SelectsALineWithoutItsEndAndNothingForALineThatIsNotThere) {
    text.SetText(u"one\r\n\r\nthree");
    text.SelectLine(1);
    EXPECT_EQ(text.SelectedText(), u"one");
    text.SelectLine(2);
    EXPECT_EQ(text.SelectedText(), u"");
    text.SelectLine(3);
    EXPECT_EQ(text.SelectedText(), u"three");
    EXPECT_EQ(text.SelectionStart(), 7);
    text.SelectLine(4);
    EXPECT_EQ(text.SelectedText(), u"");
    EXPECT_EQ(text.SelectionStart(), 7);
}

TEST_F(ProgramTextTest, SelectingALineShowsSomeBelowItAndClearingTheSelectionScrollsNothing) {
    text.SetText(std::u16string(400, u'\n'));
    for (int line = 1; line <= 100; ++line) {
        text.SelectLine(line);
        EXPECT_LT(line + 1, text.verticalScrollBar()->value() + text.verticalScrollBar()->pageStep());
    }
    text.SelectLine(1);
    text.SetSelectionLength(2);
    text.verticalScrollBar()->setValue(200);
    text.ClearSelection();
    EXPECT_EQ(text.verticalScrollBar()->value(), 200);
}

TEST_F(ProgramTextTest, KeepsCharactersThatTheControlMightDrop) {
    const std::u16string odd = std::u16string(u"a\u00A0b") + u'\0' + u"c\t\u2028d";
    text.SetText(odd + u"\u2029\uFDD0\uFDD1");
    EXPECT_EQ(text.Text(), odd + u"\uFFFD\uFFFD\uFFFD");
}

}  // namespace platform
