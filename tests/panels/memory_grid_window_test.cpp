#include "panels/memory_grid.h"

#include <algorithm>

#include "platform/modal.h"
#include "platform/palette.h"
#include "support/window_test.h"

namespace panels {

// Keys and clicks go to the window, as a user's do: it finds the control that has the focus or lies under the mouse.
class MemoryGridTest : public testing::Test {
protected:
    MemoryGridTest() {
        QObject::connect(&panel, &MemoryGrid::Cleared, [this] { ++programsLost; });
        QObject::connect(&panel, &MemoryGrid::Edited, [this] { ++edits; });
        QObject::connect(&panel, &MemoryGrid::ColumnsChanged, [this] { ++columnChanges; });
        window.resize(320, 400);
        panel.resize(305, 369);
        panel.FormatGrid();
        panel.RefreshRAMDisplay();
        Activate(window);
    }

    QModelIndex Cell(int row, int column) { return grid.model()->index(row, column); }
    QString CellText(int row, int column) { return Cell(row, column).data().toString(); }

    void Click(int row, int column) {
        const QPoint place = grid.visualRect(Cell(row, column)).center();
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, grid.viewport()->mapTo(&window, place));
    }
    void Key(Qt::Key key) { QTest::keyClick(window.windowHandle(), key); }
    void Type(const char* keys) {
        for (; *keys != '\0'; ++keys) QTest::keyClick(window.windowHandle(), *keys);
    }

    // What the boxes say that the command brings up: an input box, into which the text goes, and maybe a message.
    QString Do(void (MemoryGrid::*command)(), const QString& text = {}) {
        const InputAnswer input(text);
        const MessageAnswer message;
        (panel.*command)();
        Activate(window);
        return input.Said + message.Text;
    }

    bool IsEditorOver(int row, int column) {
        const QPoint place = grid.viewport()->mapFrom(&panel, editor.geometry().center());
        return editor.hasFocus() && grid.indexAt(place) == Cell(row, column);
    }

    m8085::MachineState machine;
    ColumnList columns;
    int programsLost = 0, edits = 0, columnChanges = 0;
    QWidget window;
    MemoryGrid panel{machine, columns, &window};
    platform::Grid& grid = *window.findChild<platform::Grid*>("grdRAM");
    QLineEdit& editor = *window.findChild<QLineEdit*>("txtEdit");
};

TEST_F(MemoryGridTest, DigitsGoIntoTheMachineOneByOneAndIntoEveryCellThatShowsThem) {
    Do(&MemoryGrid::cmdAdd_Click, "8000");
    std::uint8_t& byte = machine.Memory[0x8002] = 0x77;
    panel.RefreshRAMDisplay();
    Click(2, 1);
    EXPECT_EQ(editor.selectedText(), "77");
    EXPECT_EQ(editor.textMargins(), QMargins(1, 0, 0, 1)) << "its text stands where the cell shows it";
    Type("g3");
    EXPECT_EQ(byte, 0x03);
    panel.RefreshRAMDisplay();
    QTest::keyPress(window.windowHandle(), 'a');  // still held when the cell is left
    Click(3, 3);
    EXPECT_EQ(byte, 0x3A);
    EXPECT_EQ(editor.selectedText(), "00");
    Type("125\r\x1B");
    EXPECT_EQ(machine.Memory[0x9003], 0x12);
    Type("\b\b");
    EXPECT_EQ(machine.Memory[0x9003], 0);
    editor.insert("x1FFx");
    EXPECT_EQ(machine.Memory[0x9003], 0x1F);
    grid.scrollTo(Cell(2, 7));
    EXPECT_EQ(CellText(2, 7) + CellText(2, 1) + CellText(2, 9), "3A3A00");
    machine.Ports[1] = 0x55;
    Do(&MemoryGrid::cmdClear_Click);
    Click(4, 7);
    EXPECT_TRUE(machine.Memory == m8085::MemoryBytes{});
    EXPECT_EQ(machine.Ports[1], 0x55);
    EXPECT_EQ(programsLost, 1);
    machine.Memory[0x8004] = 0x21;
    panel.RefreshRAMDisplay();
    EXPECT_EQ(editor.selectedText(), "21");
    grid.setFocus();
    QTest::mouseClick(&editor, Qt::LeftButton, {}, {3, 5});
    EXPECT_EQ(editor.selectedText(), "21") << "a click selects it whole again";
    const QImage open = editor.grab().toImage();
    EXPECT_EQ(open.pixelColor(0, 0), platform::NextText);
    EXPECT_NE(open.pixelColor(1, 1), platform::NextText);
}

TEST_F(MemoryGridTest, TheCursorAndTabKeysMoveTheEditorButNotToTheLastRow) {
    Click(1, 1);
    Key(Qt::Key_Up);
    Key(Qt::Key_Up);
    EXPECT_TRUE(IsEditorOver(0, 1));
    QTest::keyPress(window.windowHandle(), Qt::Key_Down);
    grid.setFocus();
    Click(0, 1);
    QTest::keyRelease(window.windowHandle(), Qt::Key_Down);
    EXPECT_TRUE(IsEditorOver(0, 1)) << "a key counts where it was pressed";
    Key(Qt::Key_Down);
    EXPECT_TRUE(IsEditorOver(1, 1));
    Click(5, 0);
    Type("9");
    EXPECT_TRUE(machine.Memory == m8085::MemoryBytes{});
    Key(Qt::Key_PageDown);
    EXPECT_GT(grid.currentIndex().row(), 6);
    Key(Qt::Key_PageUp);
    Key(Qt::Key_Down);
    Key(Qt::Key_Right);
    Key(Qt::Key_Tab);
    EXPECT_TRUE(IsEditorOver(6, 3));
    Key(Qt::Key_Backtab);
    Key(Qt::Key_Backtab);
    EXPECT_TRUE(IsEditorOver(5, 7));
    const int page = grid.RowsInView();
    for (const auto& [key, row] : {std::pair(Qt::Key_PageDown, 5 + page),
                                   {Qt::Key_End, 254},
                                   {Qt::Key_PageDown, 254},
                                   {Qt::Key_PageUp, 254 - page},
                                   {Qt::Key_Home, 0},
                                   {Qt::Key_PageUp, 0}}) {
        Key(key);
        EXPECT_TRUE(IsEditorOver(row, 7)) << row;
    }
    Click(0, 3);
    Key(Qt::Key_Backtab);
    EXPECT_TRUE(IsEditorOver(0, 1));
    Key(Qt::Key_Backtab);
    Key(Qt::Key_Tab);
    EXPECT_TRUE(grid.hasFocus()) << "it does not lead back";
    machine.Memory[0x80FE] = 0x77;
    panel.RefreshRAMDisplay();
    grid.scrollToBottom();
    Click(254, 1);
    Type("12");
    Key(Qt::Key_Down);
    EXPECT_TRUE(IsEditorOver(254, 1));
    QTest::keyClick(&editor, Qt::Key_Z, Qt::ControlModifier);
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Backspace, Qt::Key_Delete})
        for (const auto with : {Qt::NoModifier, Qt::ShiftModifier}) QTest::keyClick(&editor, key, with);
    Click(254, 0);
    Click(254, 1);
    Click(255, 1);
    EXPECT_TRUE(IsEditorOver(254, 1));
    EXPECT_EQ(machine.Memory[0x80FF], 0) << "the 12 was typed into the row above";
    const auto isFramed = [this](int row) {
        const QPoint corner = grid.visualRect(Cell(row, 1)).topLeft();
        return grid.viewport()->grab().toImage().pixelColor(corner) == grid.palette().color(QPalette::Highlight);
    };
    EXPECT_TRUE(isFramed(255) && !isFramed(253));
    EXPECT_EQ(editor.accessibleName(), "Address 80FF");
    QHelpEvent rest(QEvent::ToolTip, {}, editor.mapToGlobal(QPoint(2, 2)));
    QCoreApplication::sendEvent(&editor, &rest);
    EXPECT_TRUE(QToolTip::text().startsWith("Address 80FF"));
    const QRect row = editor.rect().translated(editor.mapToGlobal(QPoint()));
    for (const QWidget* tip : QApplication::topLevelWidgets())
        EXPECT_TRUE(!tip->inherits("QTipLabel") ||
                    !tip->geometry().intersects(row.adjusted(0, 0, 0, 3 * row.height())));
    const std::function<void()> changes[] = {[this] { panel.RefreshRAMDisplay(); },
                                             [this] { panel.NameInstructionsAt({}); }, [this] { Type("3"); }};
    for (const auto& change : changes) {
        QCoreApplication::sendEvent(&editor, &rest);
        EXPECT_TRUE(QToolTip::isVisible());
        change();
        EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); })) << "it would show the old byte";
    }
    panel.RefreshRAMDisplay();
    Type("4");
    EXPECT_EQ(machine.Memory[0x80FF], 0x34);
    EXPECT_EQ(machine.Memory[0x80FE], 0x12);
    // A press in the editor is about the cell that it stands over.
    QTest::mousePress(&editor, Qt::LeftButton, {}, {3, 5});
    QTest::mouseMove(&editor, {7, 5});
    QTest::mouseRelease(&editor, Qt::LeftButton, {}, {7, 5});
    EXPECT_EQ(editor.selectedText(), "12");
    Type("5");
    EXPECT_EQ(machine.Memory[0x80FE] << 8 | machine.Memory[0x80FF], 0x0534);
    EXPECT_FALSE(isFramed(255));
    Key(Qt::Key_Down);
    EXPECT_TRUE(isFramed(255));
    grid.SetTopRow(0);
    grid.scrollToBottom();
    panel.MarkChanges({});
    EXPECT_FALSE(isFramed(255));
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
    EXPECT_EQ(editor.text(), "3E");
    machine.Memory[0x8009] = 0x76;
    Key(Qt::Key_Shift);
    machine.Memory[0x8008] = 0x44;
    Click(8, 1);
    EXPECT_EQ(std::exchange(machine.Memory[0x8009], 0x3E), 0x76);
    EXPECT_EQ(std::exchange(machine.Memory[0x8008], 0x3E), 0x44);
    // On the last row the editor is hidden, or open over the row above.
    grid.scrollToBottom();
    for (int row : {255, 254, 255}) Click(row, 1);
    machine.Memory[0x80FF] = 0x99;
    panel.RefreshRAMDisplay();
    EXPECT_EQ(editor.text(), "3E");
    Click(253, 1);
    EXPECT_EQ(std::exchange(machine.Memory[0x80FF], 0x3E), 0x99);
    EXPECT_TRUE(machine.Memory == stored);
}

TEST_F(MemoryGridTest, PairsComeAndGoBeforeThePortsAndTheEditorIsNeverOverAForeignCell) {
    machine.Ports[0xFF] = 0x66;
    machine.Memory[0xFE00] = 0xEE;
    panel.RefreshRAMDisplay();
    grid.verticalScrollBar()->setValue(40);
    Click(50, 1);
    EXPECT_EQ(Do(&MemoryGrid::cmdAdd_Click, "fe00"), "Add Column|Enter starting address");
    EXPECT_FALSE(editor.isVisible());
    EXPECT_EQ(CellText(0, 6) + CellText(0, 7) + CellText(1, 8), "FE00EE01");
    Type("34");
    Click(45, 1);
    EXPECT_EQ(machine.Ports[0xFF], 0x66);
    EXPECT_TRUE(Do(&MemoryGrid::cmdAdd_Click, "FF00").endsWith("The starting address must be between 0 and FEFF"));
    EXPECT_EQ(Do(&MemoryGrid::cmdRemove_Click, "9000"),
              "Remove Column|Enter a starting address. Your options are:\r\n8000, 9000, 9100, fe00");
    for (const char* start : {"8000", "fe00", "9100"}) Do(&MemoryGrid::cmdRemove_Click, start);
    EXPECT_EQ(Do(&MemoryGrid::cmdRemove_Click, "8000"), "");
    EXPECT_EQ(columnChanges, 1 + 4);
    Click(43, 1);
    Type("04");
    EXPECT_EQ(machine.Ports[43], 4);
    EXPECT_EQ(edits, 1) << "the 0 is what the byte was";
}

TEST_F(MemoryGridTest, GoToBringsAnAddressIntoViewOpenForTypingOrSaysWhyNot) {
    for (const auto& [address, row, column] : {std::tuple{"91F0", 0xF0, 5}, {"9005", 5, 3}, {"9005", 5, 3}}) {
        grid.SetTopRow(100);
        EXPECT_EQ(Do(&MemoryGrid::mnuGoTo_Click, address), "Go to Address|Enter an address");
        EXPECT_TRUE(IsEditorOver(row, column) && grid.IsVisible(Cell(row, column))) << address;
    }
    for (const auto& [address, reason] :
         {std::pair("ffff", "No column shows FFFF."), {"10000", "Enter"}, {"x", "Enter"}})
        EXPECT_TRUE(Do(&MemoryGrid::mnuGoTo_Click, address).section("an address", 1).startsWith(reason)) << address;
    EXPECT_EQ(Do(&MemoryGrid::mnuGoTo_Click), "Go to Address|Enter an address");
    EXPECT_EQ(grid.currentIndex(), Cell(5, 3));
    window.setFocus();
    Do(&MemoryGrid::mnuGoTo_Click, "80ff");
    EXPECT_TRUE(grid.hasFocus() && grid.currentIndex() == Cell(0xFF, 1) && grid.IsVisible(Cell(0xFF, 1)));
    Do(&MemoryGrid::cmdAdd_Click, "8080");
    Do(&MemoryGrid::mnuGoTo_Click, "80ff");
    EXPECT_TRUE(IsEditorOver(0x7F, 7)) << "where it can be typed";
}

TEST_F(MemoryGridTest, WhatHasChangedIsPaintedAndHeardInEveryColumn) {
    Do(&MemoryGrid::cmdAdd_Click, "8000");
    EXPECT_TRUE(grid.IsVisible(Cell(0, 6)) && grid.IsVisible(Cell(0, 7))) << "the new pair is to be seen";
    machine.PC = 0x80F0;
    panel.BringNextIntoView();
    EXPECT_TRUE(grid.IsVisible(Cell(0xF0, 6))) << "the columns in view stay";
    grid.scrollTo(Cell(0, 0));
    const QSignalSpy repaints(grid.model(), &QAbstractItemModel::dataChanged);
    // Marks are bluish; other text is black on yellow or green.
    const auto isMarked = [this](int row, int column) {
        const QImage picture = grid.viewport()->grab(grid.visualRect(Cell(row, column))).toImage();
        const auto* pixels = reinterpret_cast<const QRgb*>(picture.constBits());
        return std::any_of(pixels, pixels + picture.width() * picture.height(),
                           [](QRgb pixel) { return qBlue(pixel) > qGreen(pixel) + 20; });
    };
    const auto heard = [this](int row, int column) {
        return Cell(row, column).data(Qt::AccessibleTextRole).toString();
    };
    m8085::Changes changes;
    changes.Memory[0x8003] = changes.Ports[5] = true;
    EXPECT_TRUE(IsPaintedAnew(window));
    panel.MarkChanges(changes);
    panel.MarkNextAddress(0x8004);
    EXPECT_TRUE(IsPaintedAnew(window));
    EXPECT_EQ(repaints.size(), 5) << "three bytes and two addresses";
    EXPECT_TRUE(isMarked(3, 1) && isMarked(4, 0));
    EXPECT_FALSE(isMarked(2, 1) || isMarked(3, 0) || isMarked(3, 3) || isMarked(4, 2));
    Click(3, 1);
    panel.BringNextIntoView();
    ASSERT_TRUE(editor.isVisible()) << "nothing scrolls under it";
    const auto colour = [this](QPalette::ColorRole role) { return editor.palette().color(role); };
    EXPECT_TRUE(colour(QPalette::Text) == platform::ChangedText &&
                colour(QPalette::Highlight) == platform::ChangedText);
    panel.MarkChanges({});
    EXPECT_EQ(colour(QPalette::Text), QColor(Qt::black));
    panel.MarkChanges(changes);
    grid.scrollTo(Cell(3, 9));
    EXPECT_TRUE(isMarked(3, 7) && isMarked(5, 9));
    EXPECT_EQ(heard(3, 1) + '|' + heard(4, 0) + '|' + heard(5, 9),
              "Address 8003, byte 00, changed|Address 8004, next instruction|Port 05, byte 00, changed");
    const auto before = repaints.size();
    panel.MarkNextAddress(0x8005);
    EXPECT_EQ(repaints.size(), before + 4) << "two that were marked, and two that are";
    panel.MarkChanges({});
    panel.MarkNextAddress({});
    EXPECT_FALSE(isMarked(3, 7) || isMarked(5, 9) || isMarked(4, 6));
    machine.Memory[0x8004] = 0x3E;
    panel.NameInstructionsAt({0x8004});
    panel.RefreshRAMDisplay();
    machine.PC = machine.SP = 0x8004;
    machine.D = 0x80;
    machine.E = 4;
    EXPECT_TRUE(Cell(4, 1).data(Qt::ToolTipRole).toString().endsWith("PC, SP and DE point here\nInstruction MVI A,00"));
    EXPECT_TRUE(Cell(0, 9).data(Qt::ToolTipRole).toString().endsWith("decimal 0"))
        << "a port is not at the address in HL";
    machine.PC = 0;
    EXPECT_FALSE(Cell(5, 1).data(Qt::ToolTipRole).toString().contains("Instruction"));
    machine.Memory[0x8004] = 0x76;
    EXPECT_FALSE(Cell(4, 1).data(Qt::ToolTipRole).toString().contains("Instruction")) << "the cell shows what was";
    EXPECT_EQ(Cell(4, 9).data(Qt::ToolTipRole).toString(), "Port 04, decimal 4\nByte 00, binary 0000 0000, decimal 0");
}

TEST_F(MemoryGridTest, EachHeaderAndItsTipSayWhatStandsBelow) {
    const QHeaderView& headers = *grid.horizontalHeader();
    EXPECT_TRUE(headers.sectionResizeMode(0) == QHeaderView::Fixed && !headers.sectionsClickable());
    EXPECT_FALSE(grid.verticalHeader()->isVisible());
    QStringList said;
    for (const int column : {0, 1, 2, 6, 7}) {
        const auto header = [&](int role) { return grid.model()->headerData(column, Qt::Horizontal, role).toString(); };
        said += header(Qt::DisplayRole) + ' ' + CellText(0, column) + ": " + header(Qt::ToolTipRole);
    }
    EXPECT_EQ(said.join('\n'),
              "Address 8000: 256 addresses of memory, from 8000 on\n"
              "Data 00: The byte at each address\nClick a byte and type over it\n"
              "Address 9000: 256 addresses of memory, from 9000 on\n"
              "IO Port 00: The numbers of all 256 ports\n"
              "Data 00: The byte in each port, which IN reads and OUT writes\nClick a byte and type over it");
}

TEST_F(MemoryGridTest, TheEditorScrollsBeforeTheEdgeAndWithTheWheel) {
    const auto colourAt = [this](int row, int column) {
        const QRect place = grid.visualRect(Cell(row, column));
        return grid.viewport()->grab(place).toImage().pixelColor(place.width() - 4, 4);
    };
    EXPECT_EQ(colourAt(0, 0), QColor(228, 255, 204));
    EXPECT_EQ(colourAt(0, 1), QColor(253, 255, 199));
    Click(0, 1);
    EXPECT_FALSE(grid.selectionModel()->hasSelection());
    for (int row = 1; row < 40; ++row) {
        Key(Qt::Key_Down);
        ASSERT_TRUE(grid.RowIsVisible(row + 1) && (grid.TopRow() == 0 || !grid.RowIsVisible(row + 2))) << row;
    }
    for (int top = grid.TopRow(), row = 38; row > 9; --row) {
        Key(Qt::Key_Up);
        ASSERT_EQ(grid.TopRow(), std::min(top, row - 1)) << row;
    }
    const int top = grid.TopRow();
    const QPoint at = editor.rect().center();
    QWheelEvent wheel(at, editor.mapToGlobal(at), {}, {0, 120}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&editor, &wheel);
    EXPECT_LT(grid.TopRow(), top);
    EXPECT_FALSE(editor.isVisible());

    const QSignalSpy repaints(grid.model(), &QAbstractItemModel::dataChanged);
    machine.Memory[0x8000] = 1;
    panel.RefreshRAMDisplay();
    EXPECT_EQ(repaints.size(), 1);
}

}  // namespace panels
