#include "panels/memory_grid.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QScrollBar>
#include <QTest>

#include "platform/modal.h"
#include "platform/palette.h"

namespace panels {

// Keys and clicks go to the window, as a user's do: it finds the control that has the focus or lies under the mouse.
class MemoryGridTest : public testing::Test {
protected:
    MemoryGridTest() {
        QObject::connect(&panel, &MemoryGrid::Cleared, [this] { ++programsLost; });
        window.resize(320, 400);
        panel.resize(305, 369);
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
    QString CellText(int row, int column) { return Cell(row, column).data().toString(); }

    void Click(int row, int column) {
        const QPoint place = grid.visualRect(Cell(row, column)).center();
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, grid.viewport()->mapTo(&window, place));
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(window.windowHandle(), key, modifiers);
    }
    void Type(const char* keys) {
        for (; *keys != '\0'; ++keys) QTest::keyClick(window.windowHandle(), *keys);
    }

    // What the boxes say that the command brings up: an input box, into which the text goes, and maybe a message.
    QString Do(void (MemoryGrid::*command)(), const QString& text = {}) {
        const InputAnswer input(text);
        const MessageAnswer message;
        (panel.*command)();
        Activate();
        return input.Said + message.Text;
    }

    bool IsEditorOver(int row, int column) {
        const QPoint place = grid.viewport()->mapFrom(&panel, editor.geometry().center());
        return editor.hasFocus() && grid.indexAt(place) == Cell(row, column);
    }

    m8085::MachineState machine;
    ColumnList columns;
    int programsLost = 0;
    QWidget window;
    m8085::CodeMap codeMap;
    MemoryGrid panel{machine, codeMap, columns, &window};
    platform::Grid& grid = *window.findChild<platform::Grid*>("grdRAM");
    QLineEdit& editor = *window.findChild<QLineEdit*>("txtEdit");
};

TEST_F(MemoryGridTest, DigitsGoIntoTheMachineOneByOneAndWhatTheMachineOrClearWritesIsNotOverwritten) {
    std::uint8_t& byte = machine.Memory[0x8002] = 0x77;
    panel.RefreshRAMDisplay();
    Click(2, 1);
    EXPECT_EQ(editor.selectedText(), "77");
    Type("g3");
    EXPECT_EQ(byte, 0x03);
    panel.RefreshRAMDisplay();
    Type("a5\r\x1B");
    EXPECT_EQ(byte, 0x3A);
    EXPECT_EQ(editor.text(), "3a");
    Type("\b\b");
    EXPECT_EQ(byte, 0);
    editor.insert("x1FFx");
    EXPECT_EQ(byte, 0x1F);

    byte = 0x99;
    panel.RefreshRAMDisplay();
    EXPECT_EQ(editor.selectedText(), "99");
    Click(3, 1);
    EXPECT_EQ(byte, 0x99);

    machine.Ports[1] = machine.A = machine.Memory[0xFFFF] = 0x55;
    Type("12");
    Do(&MemoryGrid::cmdClear_Click);
    Click(4, 1);
    EXPECT_TRUE(machine.Memory == m8085::MemoryBytes{});
    EXPECT_EQ(machine.Ports[1] + machine.A, 0xAA);
    EXPECT_EQ(programsLost, 1);
}

TEST_F(MemoryGridTest, NoWayOfLeavingACellLosesADigit) {
    const std::function<void()> ways[] = {
        [this] { Click(9, 3); },
        [this] { Click(9, 2); },
        [this] { Key(Qt::Key_Up); },
        [this] { Key(Qt::Key_Down); },
        [this] { Key(Qt::Key_Tab); },
        [this] { grid.verticalScrollBar()->setValue(100); },
        [this] { Do(&MemoryGrid::cmdAdd_Click, "a000"); },
        [this] { Do(&MemoryGrid::cmdRemove_Click, "9100"); },
        [] {
            QWidget other;
            other.show();
            other.activateWindow();
            EXPECT_TRUE(QTest::qWaitForWindowActive(&other));
        },
    };
    for (int row = 3; const auto& leave : ways) {
        grid.scrollToTop();
        Click(row, 1);
        Type("c");
        QTest::keyPress(window.windowHandle(), 'd');  // still held when the cell is left
        leave();
        EXPECT_EQ(machine.Memory[std::size_t(0x8000 + row)], 0xCD) << row;
        Activate();
        grid.scrollToTop();
        Click(0, 1);
        EXPECT_EQ(CellText(row++, 1), "CD");
    }
    EXPECT_EQ(std::count(machine.Memory.begin(), machine.Memory.end(), 0xCD), std::ssize(ways));
    EXPECT_EQ(std::count(machine.Ports.begin(), machine.Ports.end(), 0), 256);
}

TEST_F(MemoryGridTest, TheCursorKeysMoveTheEditorOneCellButNotToTheLastRow) {
    Click(1, 1);
    Key(Qt::Key_Up);
    Key(Qt::Key_Up);
    EXPECT_TRUE(IsEditorOver(0, 1));
    for (int repeat = 0; repeat < 3; ++repeat) QTest::keyPress(window.windowHandle(), Qt::Key_Down);
    QTest::keyRelease(window.windowHandle(), Qt::Key_Down);
    EXPECT_TRUE(IsEditorOver(1, 1));
    Click(5, 0);
    EXPECT_FALSE(editor.isVisible());
    Type("9");
    EXPECT_TRUE(machine.Memory == m8085::MemoryBytes{});
    Key(Qt::Key_Down);
    Key(Qt::Key_Right);
    EXPECT_TRUE(IsEditorOver(6, 1));
    Key(Qt::Key_Tab);
    EXPECT_TRUE(IsEditorOver(6, 3));
    for (const int column : {1, 7}) {
        Key(Qt::Key_Backtab, Qt::ShiftModifier);
        EXPECT_TRUE(IsEditorOver(column == 1 ? 6 : 5, column));
    }

    grid.scrollToBottom();
    Click(254, 1);
    Type("12");
    Key(Qt::Key_Down);
    EXPECT_TRUE(IsEditorOver(254, 1));
    EXPECT_EQ(machine.Memory[0x80FF], 0);
    Key(Qt::Key_Shift);
    EXPECT_EQ(machine.Memory[0x80FF], 0x12);
    Click(254, 7);
    Key(Qt::Key_Tab);
    EXPECT_TRUE(grid.hasFocus());
}

TEST_F(MemoryGridTest, NothingIsWrittenThatNobodyTyped) {
    // Assemble from the menu and a data file that fails half-way change memory and leave the grid as it is.
    std::fill_n(machine.Memory.begin() + 0x8000, 256, 0x3E);
    const m8085::MemoryBytes stored = machine.Memory;
    for (int row : {1, 2, 4}) Click(row, 1);
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Tab, Qt::Key_Up, Qt::Key_Shift}) Key(key);
    EXPECT_EQ(CellText(1, 1) + CellText(5, 1) + CellText(6, 1), "3E3E00");

    Click(9, 1);
    editor.insert("xyz");
    Key(Qt::Key_5, Qt::AltModifier);
    EXPECT_EQ(editor.text(), "3E");
    machine.Memory[0x8009] = 0x76;
    Key(Qt::Key_Shift);
    Click(8, 1);
    EXPECT_EQ(machine.Memory[0x8009], 0x76);
    machine.Memory[0x8009] = 0x3E;
    Type("7f");
    machine.Memory[0x8008] = 0x3E;
    panel.RefreshCurrentCell();
    Key(Qt::Key_F4);
    Click(9, 1);

    // Over the last row the editor is not to be seen, or stands open over the row above.
    grid.scrollToBottom();
    EXPECT_FALSE(editor.isVisible());
    for (int row : {255, 254, 255}) Click(row, 1);
    machine.Memory[0x80FF] = 0x99;
    panel.RefreshRAMDisplay();
    EXPECT_EQ(editor.text(), "3E");
    Click(253, 1);
    EXPECT_EQ(machine.Memory[0x80FF], 0x99);
    machine.Memory[0x80FF] = 0x3E;
    EXPECT_TRUE(machine.Memory == stored);
}

TEST_F(MemoryGridTest, AllCellsThatShowAnAddressChangeTogether) {
    Do(&MemoryGrid::cmdAdd_Click, "8000");
    Click(1, 1);
    Type("12");
    grid.scrollTo(Cell(1, 7));
    EXPECT_EQ(CellText(1, 7) + CellText(1, 9), "1200");
    Click(1, 7);
    Click(2, 7);
    EXPECT_EQ(machine.Memory[0x8001], 0x12);
}

TEST_F(MemoryGridTest, PairsComeAndGoBeforeThePortsAndTheEditorIsNeverOverAForeignCell) {
    machine.Ports[0xFF] = 0x66;
    machine.Memory[0xFE00] = 0xEE;
    panel.RefreshRAMDisplay();
    grid.verticalScrollBar()->setValue(40);
    Click(50, 1);
    EXPECT_EQ(Do(&MemoryGrid::cmdAdd_Click, "fe00"), "Add Column|Enter starting address");
    EXPECT_EQ(CellText(0, 6) + CellText(0, 7) + CellText(1, 8), "FE00EE01");
    EXPECT_FALSE(editor.isVisible());
    Type("34");
    Click(45, 1);
    EXPECT_EQ(machine.Ports[0xFF], 0x66);

    EXPECT_TRUE(Do(&MemoryGrid::cmdAdd_Click, "FF00").endsWith("The starting address must be between 0 and FEFF"));
    EXPECT_EQ(Do(&MemoryGrid::cmdRemove_Click, "9000"),
              "Remove Column|Enter a starting address. Your options are:\r\n8000, 9000, 9100, fe00");
    for (const char* start : {"8000", "fe00", "9100"}) Do(&MemoryGrid::cmdRemove_Click, start);
    EXPECT_EQ(Do(&MemoryGrid::cmdRemove_Click, "8000"), "");
    ASSERT_EQ(grid.model()->columnCount(), 2);
    Click(43, 1);
    Type("4");
    EXPECT_EQ(machine.Ports[43], 4);
}

TEST_F(MemoryGridTest, WhatHasChangedIsPaintedAndHeardInEveryColumnUntilTheUserChangesSomething) {
    int edits = 0;
    QObject::connect(&panel, &MemoryGrid::Edited, [&] { ++edits; });
    Do(&MemoryGrid::cmdAdd_Click, "8000");
    // How many of these cells have text that is not black on a ground of yellow or green.
    const auto painted = [this](const std::vector<QModelIndex>& cells) {
        const QImage picture = grid.viewport()->grab().toImage();
        return std::ranges::count_if(cells, [&](const QModelIndex& cell) {
            bool isBlue = false;
            const QRect place = grid.visualRect(cell);
            for (int x = place.left(); x <= place.right(); ++x)
                for (int y = place.top(); y <= place.bottom(); ++y)
                    isBlue = isBlue || picture.pixelColor(x, y).blue() > picture.pixelColor(x, y).green() + 20;
            return isBlue;
        });
    };
    const auto heard = [this](int row, int column) {
        return QAccessible::queryAccessibleInterface(&grid)
            ->tableInterface()
            ->cellAt(row, column)
            ->text(QAccessible::Name);
    };
    m8085::Changes changes;
    changes.Memory[0x8003] = changes.Ports[5] = true;
    panel.MarkChanges(changes);
    panel.MarkNextAddress(0x8004);
    EXPECT_EQ(painted({Cell(3, 1), Cell(4, 0)}), 2);
    EXPECT_EQ(painted({Cell(2, 1), Cell(3, 0), Cell(3, 3), Cell(4, 1), Cell(4, 2)}), 0);
    EXPECT_EQ(heard(3, 1) + '|' + heard(4, 0), "Address 8003, byte 00, changed|Address 8004, next instruction");
    Click(3, 1);
    EXPECT_EQ(editor.palette().color(QPalette::Text), platform::ChangedText);
    grid.scrollTo(Cell(3, 9));
    EXPECT_EQ(painted({Cell(3, 7), Cell(5, 9)}), 2);
    EXPECT_EQ(painted({Cell(5, 7), Cell(3, 9), Cell(4, 8)}), 0);
    EXPECT_EQ(heard(5, 9), "Port 05, byte 00, changed");

    panel.MarkChanges({});
    panel.MarkNextAddress({});
    EXPECT_EQ(painted({Cell(3, 7), Cell(5, 9), Cell(4, 6)}), 0);
    EXPECT_EQ(edits, 1);
    Click(3, 7);
    Type("05");
    EXPECT_EQ(edits, 2) << "0 is what the byte was";
    Do(&MemoryGrid::cmdRemove_Click, "9100");
    EXPECT_EQ(edits, 3);

    machine.Memory[0x8004] = 0x3E;
    codeMap.SetLine(0x8004, 1);
    panel.RefreshRAMDisplay();
    EXPECT_EQ(Cell(4, 1).data(Qt::ToolTipRole).toString(),
              "Address 8004, decimal 32772\nByte 3E, binary 0011 1110, "
              "decimal 62, character >\nInstruction MVI A,00");
    EXPECT_EQ(Cell(4, 7).data(Qt::ToolTipRole).toString(), "Port 04, decimal 4\nByte 00, binary 0000 0000, decimal 0");
}

}  // namespace panels
