#include "panels/memory_grid.h"

#include <gtest/gtest.h>

#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include "platform/twips.h"

namespace panels {

// Keys and clicks go to the window, as a user's do: it finds the control that has the focus or lies under the mouse.
class MemoryGridTest : public testing::Test {
protected:
    MemoryGridTest() {
        window.resize(320, 400);
        platform::Place(panel, 0, 0, 4575, 5535);
        panel.FormatGrid();
        panel.RefreshRAMDisplay();
        window.show();
        Activate();
    }

    // Also wanted after a modal box: there is no window manager here to give the window its activation back.
    void Activate() {
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    QModelIndex Cell(int row, int column) { return grid.model()->index(row, column); }
    std::string CellText(int row, int column) { return Cell(row, column).data().toString().toStdString(); }

    void ClickAt(const QWidget& control, const QPoint& place) {
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, control.mapTo(&window, place));
    }
    void Click(int row, int column) { ClickAt(*grid.viewport(), grid.visualRect(Cell(row, column)).center()); }
    void Click(const char* button) {
        const auto& control = *window.findChild<QPushButton*>(button);
        ClickAt(control, control.rect().center());
    }
    void Key(Qt::Key key) { QTest::keyClick(window.windowHandle(), key); }
    void Type(const char* keys) {
        for (; *keys != '\0'; ++keys) QTest::keyClick(window.windowHandle(), *keys);
    }
    void TurnWheelOver(QWidget& control, int notches) {
        const QPointF place = control.rect().center();
        QWheelEvent wheel(place, control.mapToGlobal(place), {}, {0, 120 * notches}, {}, {}, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&control, &wheel);
    }

    bool IsEditorOver(int row, int column) {
        const QRect place = grid.visualRect(Cell(row, column));
        return editor.isVisible() && editor.hasFocus() &&
               editor.geometry() == place.translated(grid.viewport()->mapTo(&panel, QPoint()));
    }

    // Answers the next input box and, where one follows, closes a message box. What they said is kept.
    void Answer(const QString& answer) {
        QTimer::singleShot(0, [this, answer] {
            auto* box = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            said = box->windowTitle() + ": " + box->labelText();
            QTimer::singleShot(0, [this] {
                if (auto* message = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                    said = message->windowTitle() + ": " + message->text();
                    message->accept();
                }
            });
            box->setTextValue(answer);
            box->accept();
        });
    }

    m8085::MachineState machine;
    ColumnList columns;
    int programsLost = 0;
    QString said;
    QWidget window;
    MemoryGrid panel{machine, columns, [this] { ++programsLost; }, &window};
    platform::Grid& grid = *window.findChild<platform::Grid*>("grdRAM");
    QLineEdit& editor = *window.findChild<QLineEdit*>("txtEdit");
};

TEST_F(MemoryGridTest, DigitsTypedOrPastedGoIntoTheMachineOneByOne) {
    machine.Memory[0x8002] = 0x77;
    panel.RefreshRAMDisplay();
    Click(2, 1);
    EXPECT_TRUE(IsEditorOver(2, 1));
    EXPECT_EQ(editor.selectedText(), "77");
    Type("g3");
    EXPECT_EQ(machine.Memory[0x8002], 0x03);
    Type("a5\r\x1B");
    EXPECT_EQ(machine.Memory[0x8002], 0x3A);
    EXPECT_EQ(editor.text(), "3a");
    EXPECT_EQ(CellText(2, 1), "77");
    Type("\b\b");
    EXPECT_EQ(machine.Memory[0x8002], 0);
    editor.insert("x1FFx");
    EXPECT_EQ(editor.text(), "1F");
    EXPECT_EQ(machine.Memory[0x8002], 0x1F);
}

TEST_F(MemoryGridTest, NoWayOfLeavingACellLosesADigit) {
    const std::function<void()> ways[] = {
        [this] { Click(9, 3); },
        [this] { Click(9, 2); },
        [this] { Key(Qt::Key_Up); },
        [this] { Key(Qt::Key_Down); },
        [this] { Key(Qt::Key_Tab); },
        [this] { TurnWheelOver(editor, -1); },
        [this] { grid.verticalScrollBar()->setValue(100); },
        [this] { Answer(""), Click("cmdAdd"); },
        [this] { Answer("a000"), Click("cmdAdd"); },
        [this] { Answer("9100"), Click("cmdRemove"); },
        [this] { panel.RefreshRAMDisplay(); },
        [this] { window.clearFocus(), QApplication::setActiveWindow(nullptr); },
    };
    for (int way = 0; const auto& leave : ways) {
        grid.scrollToTop();
        const int row = 3 + way++;
        Click(row, 1);
        Type("c");
        QTest::keyPress(window.windowHandle(), 'd');  // still held when the cell is left
        leave();
        EXPECT_EQ(machine.Memory[std::size_t(0x8000 + row)], 0xCD) << "way " << way;
        Activate();
        grid.scrollToTop();
        Click(0, 1);
        EXPECT_EQ(CellText(row, 1), "CD") << "way " << way;
        EXPECT_EQ(machine.Memory[std::size_t(0x8000 + row)], 0xCD) << "way " << way;
    }
    EXPECT_EQ(std::count(machine.Memory.begin(), machine.Memory.end(), 0xCD), std::ssize(ways));
    EXPECT_EQ(std::count(machine.Ports.begin(), machine.Ports.end(), 0), 256);
}

TEST_F(MemoryGridTest, UpAndDownMoveTheEditorOneRowForEachKey) {
    machine.Memory[0x8001] = 0x42;
    panel.RefreshRAMDisplay();
    Click(0, 1);
    Key(Qt::Key_Up);
    EXPECT_TRUE(IsEditorOver(0, 1));
    for (int repeat = 0; repeat < 3; ++repeat) QTest::keyPress(window.windowHandle(), Qt::Key_Down);
    EXPECT_TRUE(IsEditorOver(0, 1));
    QTest::keyRelease(window.windowHandle(), Qt::Key_Down);
    EXPECT_TRUE(IsEditorOver(1, 1));
    EXPECT_EQ(editor.selectedText(), "42");
    Key(Qt::Key_Right);
    Key(Qt::Key_Left);
    EXPECT_EQ(editor.cursorPosition(), 1);
    EXPECT_TRUE(IsEditorOver(1, 1));
}

TEST_F(MemoryGridTest, TheCursorKeysInTheGridMoveOneCellToo) {
    Click(5, 0);
    Key(Qt::Key_Down);
    EXPECT_EQ(grid.currentIndex(), Cell(6, 0));
    EXPECT_FALSE(editor.isVisible());
    QTest::keyPress(window.windowHandle(), Qt::Key_Right);
    EXPECT_TRUE(IsEditorOver(6, 1));
    QTest::keyRelease(window.windowHandle(), Qt::Key_Right);
    TurnWheelOver(editor, -1);
    EXPECT_FALSE(editor.isVisible());
    EXPECT_TRUE(grid.hasFocus());
    Key(Qt::Key_Down);
    EXPECT_TRUE(IsEditorOver(7, 1));
    Key(Qt::Key_Down);
    EXPECT_TRUE(IsEditorOver(8, 1));
}

TEST_F(MemoryGridTest, OnTheLastRowTheEditorStaysBehind) {
    grid.scrollToBottom();
    Click(254, 1);
    Type("12");
    Key(Qt::Key_Down);
    EXPECT_EQ(grid.currentIndex(), Cell(255, 1));
    EXPECT_TRUE(IsEditorOver(254, 1));
    EXPECT_EQ(editor.text(), "12");
    EXPECT_EQ(machine.Memory[0x80FF], 0);
    Key(Qt::Key_Shift);
    EXPECT_EQ(machine.Memory[0x80FF], 0x12);
    machine.Memory[0x80FF] = 0;
    Click(250, 1);
    EXPECT_EQ(machine.Memory[0x80FF], 0x12);
}

TEST_F(MemoryGridTest, ScrollsBeforeTheEdgeAndAScrollHidesTheEditorUntilAnotherDataCellIsEntered) {
    const int last = grid.verticalScrollBar()->pageStep() - 1;
    Click(last - 1, 1);
    EXPECT_EQ(grid.TopRow(), 0);
    Key(Qt::Key_Down);
    EXPECT_EQ(grid.TopRow(), 1);
    EXPECT_TRUE(IsEditorOver(last, 1));
    Click(1, 1);
    EXPECT_EQ(grid.TopRow(), 0);
    EXPECT_TRUE(IsEditorOver(1, 1));

    grid.horizontalScrollBar()->setValue(1);
    EXPECT_FALSE(editor.isVisible());
    Click(1, 1);
    EXPECT_FALSE(editor.isVisible());
    Click(2, 1);
    EXPECT_TRUE(IsEditorOver(2, 1));
}

TEST_F(MemoryGridTest, AnAddressCellHidesTheEditorAndKeysWriteNothing) {
    Click(4, 1);
    Type("5");
    Click(4, 0);
    EXPECT_FALSE(editor.isVisible());
    machine.Memory.fill(0);
    Type("9");
    QTest::keyClick(&editor, Qt::Key_Shift);
    EXPECT_EQ(std::count(machine.Memory.begin(), machine.Memory.end(), 0), 65536);
}

TEST_F(MemoryGridTest, ARefreshWhileTypingKeepsTheDigitsAndTakesTheMachinesChanges) {
    Click(1, 1);
    QTest::keyPress(window.windowHandle(), '3');
    panel.RefreshRAMDisplay();
    QTest::keyRelease(window.windowHandle(), '3');
    Type("a");
    EXPECT_EQ(machine.Memory[0x8001], 0x3A);

    machine.Memory[0x8001] = 0x99;
    panel.RefreshRAMDisplay();
    EXPECT_EQ(editor.selectedText(), "99");
    Click(2, 1);
    EXPECT_EQ(machine.Memory[0x8001], 0x99);
}

TEST_F(MemoryGridTest, ClearWipesMemoryAloneAndNothingComesBackFromTheEditor) {
    machine.Ports[1] = 0x55;
    machine.A = 0x55;
    machine.Memory[0xFFFF] = 0x55;
    Click(1, 1);
    Type("12");
    Click("cmdClear");
    EXPECT_EQ(programsLost, 1);
    EXPECT_EQ(CellText(1, 1), "00");
    Click(2, 1);
    EXPECT_EQ(std::count(machine.Memory.begin(), machine.Memory.end(), 0), 65536);
    EXPECT_EQ(machine.Ports[1], 0x55);
    EXPECT_EQ(machine.A, 0x55);
}

TEST_F(MemoryGridTest, AddColumnPutsAPairBeforeThePortsAndLeavesNoEditorOverAForeignCell) {
    machine.Ports[0xFF] = 0x66;
    machine.Memory[0xFE00] = 0xEE;
    panel.RefreshRAMDisplay();
    grid.verticalScrollBar()->setValue(40);
    Click(50, 1);
    Type("12");
    Answer("fe00");
    panel.cmdAdd_Click();
    EXPECT_EQ(said, "Add Column: Enter starting address");
    ASSERT_EQ(grid.model()->columnCount(), 10);
    EXPECT_EQ(CellText(0, 6) + CellText(0, 7) + CellText(1, 8), "FE00EE01");
    EXPECT_EQ(grid.columnWidth(8), 51);
    EXPECT_EQ(grid.TopRow(), 40);
    EXPECT_FALSE(editor.isVisible());
    Activate();
    Type("34");
    Click(45, 1);
    EXPECT_EQ(machine.Ports[0xFF], 0x66);
    EXPECT_EQ(machine.Memory[0x8032], 0x12);

    Answer("FF00");
    Click("cmdAdd");
    EXPECT_EQ(said, "Add Column: The starting address must be between 0 and FEFF");
    Answer("xyz");
    Click("cmdAdd");
    EXPECT_EQ(said, "Add Column: Enter starting address");
    EXPECT_EQ(columns.ColCount(), 4);
}

TEST_F(MemoryGridTest, WithAllPairsRemovedThePortsRemain) {
    for (const char* start : {"9000", "8000", "9100"}) {
        const std::string options = columns.Options();
        Answer(start);
        Click("cmdRemove");
        EXPECT_EQ(said.toStdString(), "Remove Column: Enter a starting address. Your options are:\r\n" + options);
    }
    said.clear();
    Click("cmdRemove");
    EXPECT_EQ(said, "");
    ASSERT_EQ(grid.model()->columnCount(), 2);
    Click(3, 1);
    Type("4");
    EXPECT_EQ(machine.Ports[3], 4);
    EXPECT_EQ(machine.Memory[3], 0);
}

}  // namespace panels
