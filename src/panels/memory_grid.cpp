#include "panels/memory_grid.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QScopedValueRollback>
#include <QStylePainter>
#include <utility>

#include "panels/byte_editor.h"
#include "platform/dialogs.h"
#include "platform/fonts.h"
#include "platform/twips.h"

namespace panels {

namespace {

// The caption and the buttons share a line above the grid.
constexpr int lineTop = 60;
constexpr int lineHeight = 360;

constexpr int addressWidth = platform::Pixels(760);
constexpr int dataWidth = platform::Pixels(500);

// The model counts the rows under the header from 0 to 255. The editor does not open on the last one.
constexpr int lastRow = MemorySnapshot::Rows - 1;

bool IsDataCell(const QModelIndex& cell) {
    return cell.isValid() && MemorySnapshot::IsDataColumn(cell.column());
}

}  // namespace

MemoryGrid::MemoryGrid(m8085::MachineState& machine, ColumnList& columnList, QWidget* parent)
    : QGroupBox("Memory", parent), state(machine), columns(columnList) {
    setObjectName("frmRAM");
    setFont(platform::WindowFont());
    AddGrid();
    AddEditor();
}

void MemoryGrid::AddGrid() {
    grdRAM = new platform::Grid("grdRAM", this);
    grdRAM->setAccessibleName("Memory and ports");
    platform::Place(*grdRAM, 0, 480, 4575, 5055);
    model = new MemoryModel(grdRAM);
    grdRAM->setModel(model);
    connect(grdRAM, &platform::Grid::LeaveCell, this, &MemoryGrid::grdRAM_LeaveCell);
    connect(grdRAM, &platform::Grid::RowColChange, this, &MemoryGrid::grdRAM_RowColChange);
    connect(grdRAM, &platform::Grid::Scrolled, this, &MemoryGrid::grdRAM_Scroll);
}

void MemoryGrid::AddEditor() {
    txtEdit = new platform::TextBox("txtEdit", this);
    txtEdit->setAccessibleName("Byte");
    txtEdit->setText("00");
    txtEdit->setFrame(false);
    txtEdit->setTextMargins(1, 0, 0, 0);
    txtEdit->setFocusPolicy(Qt::ClickFocus);
    txtEdit->hide();
    txtEdit->installEventFilter(this);
    txtEdit->SetKeyFilter([this](int character) {
        return AcceptsEditorKey(character, static_cast<int>(txtEdit->text().size()),
                                static_cast<int>(txtEdit->selectedText().size()));
    });
    connect(txtEdit, &QLineEdit::textEdited, this, &MemoryGrid::txtEdit_Edited);
    connect(txtEdit, &platform::TextBox::KeyReleased, this, &MemoryGrid::txtEdit_KeyUp);
}

void MemoryGrid::FormatGrid() {
    const QScopedValueRollback formatting(formattingGrid, true);
    // The cell under the editor is not the current one any more.
    HideEditor();
    model->FormatFor(columns);
    for (int column = 0; column < model->columnCount(); ++column)
        grdRAM->setColumnWidth(column, MemorySnapshot::IsDataColumn(column) ? dataWidth : addressWidth);
    grdRAM->SetCurrentCellInPlace(model->index(lastRow, model->columnCount() - 1));
}

void MemoryGrid::RefreshRAMDisplay() {
    model->TakeFrom(state, columns);
    GiveEditorTheCurrentByte();
}

void MemoryGrid::RefreshCurrentCell() {
    const QModelIndex cell = grdRAM->currentIndex();
    if (!IsDataCell(cell)) return;
    model->SetByte(cell, model->Cells().LiveByte(state, cell.row(), cell.column()));
    GiveEditorTheCurrentByte();
}

void MemoryGrid::cmdClear_Click() {
    state.Memory.fill(0);
    RefreshRAMDisplay();
    emit Cleared();
}

void MemoryGrid::cmdAdd_Click() {
    constexpr auto title = "Add Column";
    if (!columns.CanAdd()) return;
    const QString answer = platform::AskText(*this, "Enter starting address", title);
    switch (columns.Add(answer.toStdString())) {
        case AddResult::Added:
            FormatGrid();
            RefreshRAMDisplay();
            break;
        case AddResult::OutOfRange:
            platform::ShowMessage(*this, "The starting address must be between 0 and FEFF", QMessageBox::Information,
                                  title);
            break;
        case AddResult::NoNumber:
        case AddResult::Full: break;
    }
}

void MemoryGrid::cmdRemove_Click() {
    if (!columns.CanRemove()) return;
    const QString options = QString::fromStdString(columns.Options());
    const QString answer =
        platform::AskText(*this, "Enter a starting address. Your options are:\r\n" + options, "Remove Column");
    if (!columns.Remove(answer.toStdString())) return;
    FormatGrid();
    RefreshRAMDisplay();
}

// Commits the editor's text to the cell that is left, whichever cell it came from and whether or not it is in view.
void MemoryGrid::grdRAM_LeaveCell(const QModelIndex& cell) {
    if (formattingGrid || !IsDataCell(cell)) return;
    const std::optional<std::uint8_t> byte = ReadEditorText(txtEdit->text().toStdU16String());
    if (byte) model->Cells().Store(state, cell.row(), cell.column(), *byte);
    model->SetByte(cell, byte.value_or(0));
}

void MemoryGrid::grdRAM_RowColChange(const QModelIndex& cell) {
    if (formattingGrid) return;
    if (!IsDataCell(cell)) {
        HideEditor();
        return;
    }
    if (cell.row() == lastRow) return;
    ScrollBeforeTheEdge(cell.row());
    ShowEditorOver(cell);
    keyHeldFromGrid = grdRAM->MovingKey();
}

// A row of data stays in view above and below the current one. Above the first row is the header.
void MemoryGrid::ScrollBeforeTheEdge(int row) {
    if (!grdRAM->RowIsVisible(row + 1)) grdRAM->SetTopRow(grdRAM->TopRow() + 1);
    if (row > 0 && !grdRAM->RowIsVisible(row - 1)) grdRAM->SetTopRow(grdRAM->TopRow() - 1);
}

void MemoryGrid::ShowEditorOver(const QModelIndex& cell) {
    const QRect place = grdRAM->visualRect(cell);
    txtEdit->setGeometry(QRect(grdRAM->viewport()->mapTo(this, place.topLeft()), place.size()));
    txtEdit->show();
    const QModelIndex address = cell.siblingAtColumn(cell.column() - 1);
    const QString kind = model->headerData(address.column(), Qt::Horizontal, Qt::DisplayRole).toString();
    txtEdit->setAccessibleName(kind + ' ' + TextOf(address));
    txtEdit->setText(TextOf(cell));
    txtEdit->setFocus();
    txtEdit->selectAll();
}

void MemoryGrid::HideEditor() {
    if (window()->focusWidget() == txtEdit) grdRAM->setFocus();
    txtEdit->hide();
}

void MemoryGrid::grdRAM_Scroll() {
    if (!formattingGrid) HideEditor();
}

void MemoryGrid::txtEdit_Edited() {
    const std::u16string text = txtEdit->text().toStdU16String();
    const std::u16string cut = CutInsertedText(text, txtEdit->cursorPosition());
    if (cut != text) txtEdit->setText(QString::fromStdU16String(cut));
    StoreEditorText();
}

void MemoryGrid::txtEdit_KeyUp(int key) {
    StoreEditorText();
    // A key that moved here from the grid and is only now released has done its work.
    const bool isHeldFromGrid = key == std::exchange(keyHeldFromGrid, 0);
    const QModelIndex cell = grdRAM->currentIndex();
    if (isHeldFromGrid || !IsDataCell(cell)) return;
    if (key == Qt::Key_Up && cell.row() > 0) grdRAM->setCurrentIndex(cell.siblingAtRow(cell.row() - 1));
    if (key == Qt::Key_Down && cell.row() < lastRow) grdRAM->setCurrentIndex(cell.siblingAtRow(cell.row() + 1));
}

QString MemoryGrid::TextOf(const QModelIndex& cell) const {
    return cell.data(Qt::DisplayRole).toString();
}

// What is being typed stays as it is, with its caret, while it means the byte that the cell shows.
void MemoryGrid::GiveEditorTheCurrentByte() {
    const QModelIndex cell = grdRAM->currentIndex();
    if (!IsDataCell(cell)) return;
    const std::uint8_t typed = ReadEditorText(txtEdit->text().toStdU16String()).value_or(0);
    if (typed == model->Cells().Byte(cell.row(), cell.column())) return;
    txtEdit->setText(TextOf(cell));
    txtEdit->selectAll();
}

void MemoryGrid::StoreEditorText() {
    const QModelIndex cell = grdRAM->currentIndex();
    if (!IsDataCell(cell)) return;
    const std::optional<std::uint8_t> byte = ReadEditorText(txtEdit->text().toStdU16String());
    model->Cells().Store(state, cell.row(), cell.column(), byte.value_or(0));
}

// The grid fills the frame and has an edge of its own, so the frame draws no more than its caption.
void MemoryGrid::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    const QRect line(0, platform::Pixels(lineTop), width(), platform::Pixels(lineHeight));
    painter.drawItemText(line, Qt::AlignLeft | Qt::AlignVCenter, palette(), isEnabled(), title(), QPalette::WindowText);
}

// The wheel over the editor scrolls the grid under it.
bool MemoryGrid::eventFilter(QObject* watched, QEvent* event) {
    if (watched != txtEdit || event->type() != QEvent::Wheel) return QGroupBox::eventFilter(watched, event);
    QCoreApplication::sendEvent(grdRAM->viewport(), event);
    return true;
}

}  // namespace panels
