#include "platform/program_text.h"

#include "support/window_test.h"

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

TEST_F(ProgramTextTest, EveryInsertionIsOneChangeAndOneStep) {
    QTest::keyClicks(&text, "ab");
    text.ReplaceSelection(u"c");
    QTest::keyClicks(&text, "d");
    QApplication::clipboard()->setText(QStringLiteral("e\u00A0f\u2028\u2029"));
    QTest::keyClick(&text, Qt::Key_Insert, Qt::ShiftModifier);
    text.InsertAt({1, 2}, u":");
    EXPECT_EQ(text.SelectionStart(), 4);
    text.SetSelectionLength(2);
    text.ReplaceSelection(u"m\r\nn");
    EXPECT_EQ(changes.count(), 7);
    const std::u16string steps[] = {u"ab", u"abc", u"abcd", u"abcde\u00A0f\u2028\u2029", u"a:b:cde\u00A0f\u2028\u2029"};
    for (auto step = std::rbegin(steps); step != std::rend(steps); ++step) {
        text.undo();
        EXPECT_EQ(text.Text(), *step);
    }
    text.redo();
    EXPECT_EQ(text.Text(), steps[1]);
}

TEST_F(ProgramTextTest, AllStepsButTheLatestAreForgottenUnseen) {
    text.InsertAt(std::vector<std::size_t>(30'000, 0), std::u16string(70, u'x') + u"\r\n");
    const std::u16string before = text.Text();
    text.SelectLine(30'000);
    changes.clear();
    text.ReplaceSelection(u"y");
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(text.SelectionStart(), 29'999 * 72 + 1);
    text.undo();
    text.undo();
    EXPECT_EQ(text.Text(), before);
}

TEST_F(ProgramTextTest, TabAndEnterDoTheSameWhateverTheShiftStateAndAltTypesNothing) {
    text.SetText(u"ab");
    text.selectAll();
    QTest::keyClick(&text, Qt::Key_Tab);
    QTest::keyClick(&text, Qt::Key_Backtab, Qt::ShiftModifier);
    QTest::keyClick(&text, Qt::Key_Return);
    QTest::keyClick(&text, Qt::Key_Return, Qt::ShiftModifier);
    QTest::sendKeyEvent(QTest::Click, &text, Qt::Key_R, 'r', Qt::AltModifier);
    QTest::sendKeyEvent(QTest::Click, &text, Qt::Key_Q, '@', Qt::AltModifier | Qt::ControlModifier);  // AltGr
    EXPECT_EQ(text.Text(), u"\t\t\r\n\r\n@");
}

TEST_F(ProgramTextTest, SelectsALineWithoutItsEndAndNothingForALineThatIsNotThere) {
    text.SetText(u"one\r\n\r\nthree");
    const std::u16string_view selected[] = {u"one", u"", u"three", u""};
    for (int line = 1; line <= 4; ++line) {
        text.SelectLine(line);
        EXPECT_EQ(text.SelectedText(), selected[line - 1]);
    }
    EXPECT_EQ(text.SelectionStart(), 7);
}

TEST_F(ProgramTextTest, ADragFromASelectedLineSelectsAlsoFromItsEnd) {
    text.SetText(u"inr a\r\ninr b");
    const int width = text.fontMetrics().horizontalAdvance("inr a");
    for (const int from : {width / 2, width - 2, width * 2}) {
        text.SelectLine(1);
        QTimer::singleShot(1000, &QDrag::cancel);
        QTest::mousePress(text.viewport(), Qt::LeftButton, {}, {from, 12});
        QTest::mouseMove(text.viewport(), {4, 30});
        QTest::mouseRelease(text.viewport(), Qt::LeftButton, {}, {4, 30});
        EXPECT_TRUE(text.SelectedText().ends_with(u"\r\n"));
    }
    text.selectAll();
    QTest::mousePress(text.viewport(), Qt::LeftButton, {}, {4, 12});
    EXPECT_EQ(text.SelectedText(), text.Text()) << "what the user has selected can be dragged away";
    QTest::mouseRelease(text.viewport(), Qt::LeftButton, {}, {4, 12});
    EXPECT_EQ(text.SelectedText(), u"");
}

TEST_F(ProgramTextTest, SelectingALineShowsSomeBelowItAndClearingTheSelectionScrollsNothing) {
    text.SetText(std::u16string(400, u'\n'));
    text.SelectLine(100);
    EXPECT_LT(101, text.verticalScrollBar()->value() + text.verticalScrollBar()->pageStep());
    text.SetSelectionLength(2);
    text.verticalScrollBar()->setValue(200);
    text.ClearSelection();
    EXPECT_EQ(text.verticalScrollBar()->value(), 200);
}

TEST_F(ProgramTextTest, KeepsCharactersThatTheControlMightDrop) {
    const std::u16string odd = std::u16string(u"a\u00A0b") + u'\0' + u"c\t\u2028d";
    text.SetText(odd + u"\u2029\uFDD0\uFDD1");
    EXPECT_EQ(text.Text(), odd + u"\u2029\uFDD0\uFDD1");
}

}  // namespace platform
