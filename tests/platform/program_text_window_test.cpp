#include "platform/program_text.h"

#include "support/window_test.h"

#include <QToolTip>

#include "platform/palette.h"

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
    text.SelectLine(1);
    text.SetSelectionLength(1);
    EXPECT_EQ(text.SelectedText(), u"a");
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
    text.ToggleMark(30'000);
    text.Notes().Show({{29'999, "x"}});
    changes.clear();
    const int down = text.verticalScrollBar()->value();
    text.ReplaceSelection(u"y");
    EXPECT_EQ(text.verticalScrollBar()->value(), down);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(text.SelectionStart(), 29'999 * 72 + 1);
    EXPECT_TRUE(text.Marks().Has(30'000) && text.accessibleDescription() == "Line 29999: x");
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
    // What is being dragged after the mouse has moved there.
    const auto dragTo = [this](const QPoint& place) {
        QTimer::singleShot(0, &QDrag::cancel);
        QMouseEvent move(QEvent::MouseMove, place, text.viewport()->mapToGlobal(place), {}, Qt::LeftButton, {});
        QApplication::sendEvent(text.viewport(), &move);
        const std::unique_ptr<QDrag> drag(text.viewport()->findChild<QDrag*>());
        return drag == nullptr ? QString() : drag->mimeData()->text();
    };
    EXPECT_EQ(dragTo({60, 30}), "inr a\ninr b");
    EXPECT_EQ(dragTo({60, 30}), "") << "the drag is over";
    QTest::mousePress(text.viewport(), Qt::LeftButton, {}, {4, 12});
    QTest::mouseRelease(text.viewport(), Qt::LeftButton, {}, {4, 12});
    EXPECT_EQ(text.SelectedText(), u"");
    EXPECT_EQ(dragTo({60, 30}), "");
    text.selectAll();
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::MiddleButton})
        QTest::mousePress(text.viewport(), button, {}, {4, 12});
    EXPECT_EQ(dragTo({60, 30}), "") << "nor where another press came between";
    QTest::mousePress(text.viewport(), Qt::LeftButton, {}, {4, 12});
    text.SelectLine(2);
    EXPECT_EQ(dragTo({60, 30}), "") << "nor what has been selected since";
    QTest::mouseDClick(text.viewport(), Qt::LeftButton, {}, {4, 12});
    QTest::mouseClick(text.viewport(), Qt::LeftButton, {}, {4, 12});
    EXPECT_EQ(text.SelectedText(), u"inr a\r\n") << "a third click selects the line";
}

TEST_F(ProgramTextTest, AMenuIsAboutItsPlaceWhateverARunShowsMeanwhile) {
    text.SetText(u"inr a\r\ninr b\r\ninr c");
    for (const bool changesText : {false, true}) {
        text.selectAll();
        QContextMenuEvent open(QContextMenuEvent::Mouse, {4, 30}, {});
        QApplication::sendEvent(text.viewport(), &open);
        text.ClearSelection();
        text.SelectLine(3);
        EXPECT_EQ(text.SelectedText(), text.Text());
        EXPECT_EQ(text.CurrentLine(), 2);
        if (changesText) text.ReplaceSelection(u"nop\r\nnop\r\nnop\r\nnop");
        QApplication::activePopupWidget()->close();
        QApplication::processEvents();
        EXPECT_EQ(text.SelectedText(), changesText ? u"" : u"inr c");
        EXPECT_EQ(text.CurrentLine(), changesText ? 4 : 3);
    }
}

TEST_F(ProgramTextTest, SelectingALineShowsSomeBelowItAndClearingTheSelectionScrollsNothing) {
    text.SetText(std::u16string(400, u'\n'));
    text.ToggleMark(205);
    text.SelectLine(100);
    EXPECT_LT(101, text.verticalScrollBar()->value() + text.verticalScrollBar()->pageStep());
    text.SetSelectionLength(2);
    text.verticalScrollBar()->setValue(200);
    text.ClearSelection();
    EXPECT_EQ(text.verticalScrollBar()->value(), 200);
    EXPECT_TRUE(IsPaintedAnew(text));
    text.verticalScrollBar()->setValue(203);
    EXPECT_TRUE(IsPaintedAnew(text));
    text.ReplaceSelection(u"x");
    EXPECT_LT(text.verticalScrollBar()->value(), 100);
    for (const auto& [key, shift] : {std::pair(Qt::Key_Tab, Qt::NoModifier), {Qt::Key_Return, Qt::ShiftModifier}}) {
        text.verticalScrollBar()->setValue(200);
        QTest::keyClick(&text, key, shift);
        EXPECT_LT(text.verticalScrollBar()->value(), 110);
    }
}

TEST_F(ProgramTextTest, MarksGoWithTheirLinesAndWithALineThatIsRemoved) {
    struct Change {
        int Start;
        int Length;
        const char16_t* Text;
        std::vector<int> Marked;
    };
    const Change all[] = {
        {4, 0, u"\r\n", {3, 4, 6}},
        {6, 0, u"\r\nx", {2, 4, 6}},  // at the beginning, at the end
        {0, 0, u"x\r\ny\r\n", {4, 5, 7}},
        {4, 2, u"zz", {2, 3, 5}},  // above it, in its place
        {8, 0, u"x\r\n", {2, 3, 6}},
        {4, 4, u"", {2, 4}},
        {2, 4, u"", {2, 4}},  // with one of the line ends around it
        {2, 2, u"", {1, 2, 4}},
        {6, 2, u"", {2, 4}},  // joined to another; an empty line is gone then
        {0, 16, u"f\r\n\r\ng\r\nh", {}},
        {12, 4, u"", {2, 3}},
        {12, 2, u"", {2, 3, 4}},
    };
    for (const auto& [start, length, inserted, marked] : all) {
        text.ClearMarks();
        text.SetText(u"a1\r\nb2\r\n\r\nd4\r\ne5");
        for (const int line : {1, 2, 3, 5, 1, 9}) text.ToggleMark(line);
        text.SetSelectionStart(start);
        text.SetSelectionLength(length);
        if (length > 0) text.ReplaceSelection(inserted);
        for (const char16_t* next = inserted; length == 0 && *next != 0; ++next)
            if (*next != u'\n') QTest::keyClick(&text, static_cast<char>(*next));
        EXPECT_EQ(text.Marks().Lines(), marked) << start << ' ' << length;
    }
    text.undo();
    EXPECT_TRUE(text.Marks().Has(5)) << "what was joined is separated again";
}

// As Qt moves what is dragged, which needs a desktop.
TEST_F(ProgramTextTest, AMarkGoesWithALineThatIsMoved) {
    struct Move {
        int From, To, Place;
        std::vector<int> Marked;
    };
    for (const auto& [from, to, place, marked] :
         {Move{0, 4, 6, {1, 3}}, {2, 6, 0, {1, 2}}, {4, 6, 6, {2, 3}}, {6, 7, 2, {2, 3}}, {1, 3, 7, {2, 4}}}) {
        QTextDocument lines("a\nb\nc\nd");
        LineMarks marks(lines);
        for (const int line : {2, 3}) marks.Toggle(line);
        QTextCursor taken(&lines), put(&lines);
        taken.setPosition(from);
        taken.setPosition(to, QTextCursor::KeepAnchor);
        put.setPosition(place);
        marks.Lift(taken);
        const QString moved = taken.selectedText();
        put.beginEditBlock();
        taken.removeSelectedText();
        put.insertText(moved);
        put.endEditBlock();
        EXPECT_FALSE(marks.Follow(put.position()));
        EXPECT_EQ(marks.Lines(), marked) << from;
    }
}

TEST_F(ProgramTextTest, AMarkAndANoteStayWhereAChangeIsRefused) {
    text.SetRules(
        {.Plain = [](std::u16string_view lines) { return std::u16string(lines); },
         .FindProblem = [](std::u16string_view lines) { return lines.find(u"ab") < lines.size() ? "no" : ""; },
         .RoomIn = [](std::u16string_view) { return 1000; }});
    text.SetText(u"a\r\nx\r\nb");
    text.ToggleMark(2);
    text.Notes().Show({{2, "x"}, {3, "b"}});
    text.SetSelectionStart(1);
    text.SetSelectionLength(5);
    QTest::keyClick(&text, Qt::Key_Delete);
    EXPECT_EQ(text.SelectedText(), u"\r\nx\r\n") << "the caret stays as well";
    EXPECT_EQ(text.accessibleDescription(), "Line 2: x; Line 3: b");
    text.SetSelectionStart(6);
    QTest::keyClick(&text, Qt::Key_C);
    EXPECT_EQ(text.Text(), u"a\r\nx\r\ncb");
    EXPECT_TRUE(text.Marks().Has(2) && !text.Marks().Has(3));
    EXPECT_TRUE(!text.ReplaceLines(u"ab\r\nx\r\ncb") && text.ReplaceLines(text.Text()));
}

TEST_F(ProgramTextTest, MarksAreSeenSetByClicksInTheMarginAndToldByTheNumbersThatWereKept) {
    const QSignalSpy told(&text, &ProgramText::MarksChanged);
    text.SetText(u"a\r\nb\r\nc\r\nd");
    text.KeepLineNumbers();
    auto& margin = *text.findChild<QWidget*>("margin");
    EXPECT_EQ(text.viewport()->x(), margin.geometry().right() + 1);
    const QPoint places[] = {{5, 12}, {5, 40}, {5, 200}};
    EXPECT_TRUE(IsPaintedAnew(text));
    for (const QPoint& place : places) QTest::mouseClick(&margin, Qt::LeftButton, {}, place);
    EXPECT_EQ(text.Marks().KeptNumbers(), (std::vector{1, 3}));
    const QImage ground = text.viewport()->grab().toImage();
    const QImage dots = margin.grab().toImage();
    for (const auto& [y, isMarked] : {std::pair{12, true}, {25, false}, {45, true}}) {
        EXPECT_EQ(ground.pixelColor(100, y) == MarkGround, isMarked) << y;
        EXPECT_EQ(dots.pixelColor(LineMargin::Width / 2, y) == MarkDot, isMarked) << y;
    }
    int darkest = 255;
    for (int x = 0; x < 20; ++x) darkest = std::min(darkest, qGray(ground.pixel(x, 12)));
    EXPECT_LT(darkest, 100) << "the text stands on its mark";
    std::set<int> greys;
    for (int x = 0; x < LineMargin::Width; ++x) greys.insert(qGray(dots.pixel(x, 9)));
    EXPECT_TRUE(*greys.begin() == qGray(MarkDot.rgb()) && greys.size() > 2) << "soft edges and no outline";
    EXPECT_TRUE(IsPaintedAnew(text));
    text.SetSelectionStart(0);
    text.ReplaceSelection(u"x\r\n");
    EXPECT_TRUE(IsPaintedAnew(text));
    text.ToggleMark(1);
    EXPECT_EQ(margin.accessibleName() + '|' + margin.toolTip() + '|' + margin.accessibleDescription(),
              "Marks of lines|Click to stop runs at a line, or no longer (F9)|Runs stop at line 1, 2, 4");
    EXPECT_TRUE(IsPaintedAnew(text));
    EXPECT_EQ(text.Marks().KeptNumbers(), (std::vector{1, 3}));
    const auto before = told.count();
    text.KeepLineNumbers();
    EXPECT_EQ(text.Marks().KeptNumbers(), (std::vector{1, 2, 4}));
    text.selectAll();
    text.ReplaceSelection({});
    text.ToggleMark(1);
    text.ClearMarks();
    EXPECT_EQ(margin.accessibleDescription(), "");
    EXPECT_EQ(told.count(), before + 4);
    text.ReplaceSelection(std::u16string(99, u'\n'));
    QWheelEvent wheel({3, 9}, margin.mapToGlobal(QPoint(3, 9)), {}, {0, 120}, Qt::NoButton, {}, Qt::NoScrollPhase,
                      false);
    const int down = text.verticalScrollBar()->value();
    QApplication::sendEvent(&margin, &wheel);
    EXPECT_LT(text.verticalScrollBar()->value(), down);
}

TEST_F(ProgramTextTest, WhatIsBeingComposedEndsBeforeAnythingElseIsDone) {
    text.SetText(u"nop\r\nhlt");
    const std::function<void()> others[] = {
        [this] { QTest::keyClick(&text, Qt::Key_PageDown); },
        [this] { text.ReplaceSelection(u"x"); },
        [this] { text.SelectLine(1); },
    };
    for (const auto& other : others) {
        text.moveCursor(QTextCursor::End);
        changes.clear();
        QInputMethodEvent compose("\u00B4", {});
        QApplication::sendEvent(&text, &compose);
        EXPECT_EQ(changes.count(), 0);
        other();
        EXPECT_EQ(text.document()->lastBlock().layout()->preeditAreaText(), "") << &other - others;
    }
    EXPECT_EQ(text.Text(), u"nop\r\nhltx");
}

TEST_F(ProgramTextTest, ALineIsNeverWrappedAndATabLeadsToTheEighthColumn) {
    EXPECT_TRUE(text.verticalScrollBar()->isVisible() && text.horizontalScrollBar()->isVisible());
    text.SetText(u"\t" + std::u16string(5000, u'x'));
    EXPECT_EQ(text.document()->firstBlock().layout()->lineCount(), 1);
    const int atStart = text.cursorRect().x();
    text.SetSelectionStart(1);
    EXPECT_EQ(text.cursorRect().x() - atStart, 8 * text.fontMetrics().horizontalAdvance(' '));
}

TEST_F(ProgramTextTest, KeepsCharactersThatTheControlMightDrop) {
    const std::u16string odd = std::u16string(u"a\u00A0b") + u'\0' + u"c\t\u2028d\U0001F429\U0001F4D0\U0001F4D1";
    text.SetText(odd + u"\u2029\uFDD0\uFDD1");
    EXPECT_EQ(text.Text(), odd + u"\u2029\uFDD0\uFDD1");
}

TEST_F(ProgramTextTest, ANoteGoesWithItsLineAndIsGoneWhenItChanges) {
    struct Edit {
        int At;
        Qt::Key Key;
        const char* Told;
    };
    const Edit edits[] = {{0, Qt::Key_Return, "Line 2: a; Line 4: b; Line 5: c"},
                          {3, Qt::Key_Return, "Line 1: a; Line 4: b; Line 5: c"},
                          {6, Qt::Key_Return, "Line 1: a; Line 4: b; Line 5: c"},
                          {13, Qt::Key_Return, "Line 1: a; Line 3: b; Line 5: c"},
                          {5, Qt::Key_Delete, "Line 1: a; Line 3: b; Line 4: c"},
                          {8, Qt::Key_A, "Line 1: a; Line 4: c"},
                          {10, Qt::Key_Return, "Line 1: a; Line 5: c"},
                          {15, Qt::Key_Backspace, "Line 1: a"},
                          {0, Qt::Key_Delete, "Line 3: b; Line 4: c"}};
    for (const auto& [at, key, told] : edits) {
        text.SetText(u"one\r\n2\r\nthree\r\nfour");
        text.Notes().Show({{1, "a"}, {3, "b"}, {4, "c"}, {5, "no such line"}});
        text.SetSelectionStart(at);
        QTest::keyClick(&text, key);
        EXPECT_EQ(text.accessibleDescription(), told) << at;
    }
    text.SetText(u"one\r\n2\r\nthree");
    text.Notes().Show({{1, "a"}, {2, "b"}});
    text.InsertAt({0, 5, 8}, u"\r\n\r\n");
    EXPECT_EQ(text.accessibleDescription(), "Line 3: a; Line 6: b") << "moved within what one change has touched";
}

TEST_F(ProgramTextTest, ANoteIsPaintedAfterItsLineAndATooltipHasAllOfIt) {
    text.resize(400, 200);
    const QString words = QString("<b> is not a register, ").repeated(9);
    text.SetText(
        u"mvi <b>,5\r\n" + std::u16string(200, u'x') + u"\r\nhlt\r\n" +
        std::u16string(std::size_t(text.viewport()->width() / text.fontMetrics().horizontalAdvance('y') - 2), u'y'));
    using enum LineNote::Kind;
    EXPECT_TRUE(IsPaintedAnew(text));
    text.Notes().Show({{1, words}, {2, words}, {3, "held", Good}, {4, words, Neutral}});
    // Where its ground begins and ends, as far from the end of its line.
    const auto extent = [this](int line, const QColor& ground) {
        QCoreApplication::processEvents();
        const QTextBlock block = text.document()->findBlockByNumber(line - 1);
        QTextCursor end(block);
        end.movePosition(QTextCursor::EndOfBlock);
        const QRect caret = text.cursorRect(end);
        const QImage picture = text.viewport()->grab().toImage();
        int first = -1;
        int last = -1;
        for (int x = 0; x < picture.width(); ++x)
            if (picture.pixelColor(x, caret.top() + 1) == ground) (first < 0 ? first : last) = x;
        int darkest = 255;
        for (int x = first; x < last; ++x) darkest = std::min(darkest, qGray(picture.pixel(x, caret.center().y())));
        EXPECT_TRUE(darkest < 128 || last < first + 40) << "it has room for letters";
        for (int y = caret.top(); y <= caret.bottom() && first > 0; ++y)
            for (int x = last + 1; x < picture.width(); ++x)
                EXPECT_GT(qGray(picture.pixel(x, y)), 200) << "letters beyond their ground";
        return std::tuple(first - caret.right(), last, picture.width() - 1);
    };
    EXPECT_TRUE(IsPaintedAnew(text));
    const auto [gap, end, edge] = extent(1, BadNoteGround);
    EXPECT_GT(gap, 0);
    EXPECT_EQ(end, edge) << "it is cut off";
    EXPECT_LT(std::get<0>(extent(2, BadNoteGround)), 0) << "what is out of view anyway is covered";
    EXPECT_LT(std::get<1>(extent(3, GoodNoteGround)), edge);
    EXPECT_GE(std::get<0>(extent(4, NeutralNoteGround)), 0) << "a neutral one covers nothing";
    text.moveCursor(QTextCursor::End);
    for (const char* const composed : {"x", ""}) {
        QInputMethodEvent compose(composed, {});
        QApplication::sendEvent(&text, &compose);
        EXPECT_GT(std::get<1>(extent(3, GoodNoteGround)), 0) << "while something is composed in the last line";
    }
    text.horizontalScrollBar()->setValue(20);
    EXPECT_TRUE(IsPaintedAnew(text));
    const QImage bar = text.horizontalScrollBar()->grab().toImage();
    text.horizontalScrollBar()->setValue(text.horizontalScrollBar()->maximum());
    EXPECT_GT(std::get<0>(extent(2, BadNoteGround)), 0);
    EXPECT_NE(text.horizontalScrollBar()->grab().toImage(), bar);

    QHelpEvent rest(QEvent::ToolTip, {edge - 9, 24}, text.viewport()->mapToGlobal(QPoint(edge - 9, 24)));
    QApplication::sendEvent(text.viewport(), &rest);
    EXPECT_TRUE(QToolTip::text().contains("&lt;b&gt;")) << "markup in a program is text";
    QTest::keyClick(&text, Qt::Key_A);
    EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }));
    EXPECT_TRUE(IsPaintedAnew(text));
    text.Notes().Clear();
    EXPECT_TRUE(IsPaintedAnew(text));
    EXPECT_LT(text.horizontalScrollBar()->maximum() + text.viewport()->width(), 201 * 10);
}

}  // namespace platform
