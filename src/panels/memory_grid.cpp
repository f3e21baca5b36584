#include "panels/memory_grid.h"

#include <QCoreApplication>
#include <QPainter>
#include <QScopedValueRollback>
#include <QStylePainter>
#include <utility>

#include "panels/byte_editor.h"
#include "panels/register_edit.h"
#include "platform/dialogs.h"
#include "platform/fonts.h"
#include "platform/palette.h"
#include "platform/style.h"
#include "platform/tip.h"
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

// Its text stands where the cell shows it, and a thin edge shows that it is open.
class CellEditor : public platform::TextBox {
public:
    explicit CellEditor(QWidget* parent) : TextBox("txtEdit", parent) {
        setFont(platform::SansSerif(8.25));
        setFrame(false);
        setTextMargins(1, 0, 0, 1);
        setFocusPolicy(Qt::ClickFocus);
    }

protected:
    void paintEvent(QPaintEvent* event) override {
        TextBox::paintEvent(event);
        QPainter painter(this);
        platform::DrawEdge(painter, rect(), palette().color(QPalette::Highlight));
    }
};

}  // namespace

MemoryGrid::MemoryGrid(m8085::MachineState& machine, ColumnList& columns, QWidget* parent)
    : QGroupBox("Memory", parent),
      machine_(machine),
      columns_(columns),
      grdRAM_(new platform::Grid("grdRAM", this)),
      model_(new MemoryModel(machine, grdRAM_)),
      txtEdit_(new CellEditor(this)) {
    setObjectName("frmRAM");
    setFont(platform::WindowFont());
    SetUpGrid();
    SetUpEditor();
}

void MemoryGrid::SetUpGrid() {
    grdRAM_->setAccessibleName("Memory and ports");
    platform::Place(*grdRAM_, 0, 480, 4575, 5055);
    grdRAM_->setModel(model_);
    connect(grdRAM_, &platform::Grid::LeaveCell, this, &MemoryGrid::grdRAM_LeaveCell);
    connect(grdRAM_, &platform::Grid::RowColChange, this, &MemoryGrid::grdRAM_RowColChange);
    connect(grdRAM_, &platform::Grid::TipWanted, this, &MemoryGrid::ShowTip);
    connect(grdRAM_, &platform::Grid::Scrolled, this, &MemoryGrid::grdRAM_Scroll);
}

void MemoryGrid::SetUpEditor() {
    txtEdit_->setAccessibleName("Byte");
    txtEdit_->SelectAllWhenClicked();
    SetEditorText("00");
    txtEdit_->hide();
    txtEdit_->installEventFilter(this);
    txtEdit_->SetKeyFilter([this](int character) {
        return AcceptsEditorKey(character, static_cast<int>(txtEdit_->text().size()),
                                static_cast<int>(txtEdit_->selectedText().size()));
    });
    connect(txtEdit_, &QLineEdit::textEdited, this, &MemoryGrid::txtEdit_Edited);
    connect(txtEdit_, &platform::TextBox::KeyReleased, this, &MemoryGrid::txtEdit_KeyUp);
}

void MemoryGrid::FormatGrid() {
    const QScopedValueRollback formatting(formattingGrid_, true);
    // The cell under the editor is not the current one any more.
    HideEditor();
    model_->FormatFor(columns_);
    for (int column = 0; column < model_->columnCount(); ++column)
        grdRAM_->setColumnWidth(column, MemorySnapshot::IsDataColumn(column) ? dataWidth : addressWidth);
    grdRAM_->SetCurrentCellInPlace(model_->index(lastRow, model_->columnCount() - 1));
}

void MemoryGrid::RefreshRAMDisplay() {
    platform::HideTip();
    model_->TakeFromMachine();
    GiveEditorItsByte();
}

void MemoryGrid::RefreshCurrentCell() {
    for (const QModelIndex& cell : {grdRAM_->currentIndex(), QModelIndex(editorCell_)})
        if (MemoryModel::IsDataCell(cell)) model_->TakeByte(cell);
    GiveEditorItsByte();
}

void MemoryGrid::MarkChanges(const m8085::Changes& changes) {
    model_->MarkChanges(changes);
    DescribeEditor();
}

void MemoryGrid::cmdClear_Click() {
    machine_.Memory.fill(0);
    NameInstructionsAt({});
    RefreshRAMDisplay();
    emit Cleared();
}

void MemoryGrid::cmdAdd_Click() {
    constexpr auto title = "Add Column";
    if (!columns_.CanAdd()) return;
    const QString answer = platform::AskText(*this, "Enter starting address", title);
    switch (columns_.Add(answer.toStdString())) {
        case AddResult::Added:
            FormatGrid();
            RefreshRAMDisplay();
            emit Edited();
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
    if (!columns_.CanRemove()) return;
    const QString options = QString::fromStdString(columns_.Options());
    const QString answer =
        platform::AskText(*this, "Enter a starting address. Your options are:\r\n" + options, "Remove Column");
    if (!columns_.Remove(answer.toStdString())) return;
    FormatGrid();
    RefreshRAMDisplay();
    emit Edited();
}

void MemoryGrid::grdRAM_LeaveCell(const QModelIndex& cell) {
    if (!formattingGrid_ && !txtEdit_->text().isEmpty()) StorePendingText(cell);
}

void MemoryGrid::grdRAM_RowColChange(const QModelIndex& cell) {
    if (formattingGrid_) return;
    if (!MemoryModel::IsDataCell(cell)) {
        HideEditor();
        return;
    }
    model_->TakeByte(cell);
    textIsPending_ = false;
    // An editor that is open stays where it is, and what is typed into it goes into the last row.
    if (cell.row() == lastRow) {
        txtEdit_->selectAll();
        return DescribeEditor();
    }
    ScrollBeforeTheEdge(cell.row());
    ShowEditorOver(cell);
    keyHeldFromGrid_ = grdRAM_->MovingKey();
}

// A row of data stays in view above and below the current one. Above the first row is the header.
void MemoryGrid::ScrollBeforeTheEdge(int row) {
    if (!grdRAM_->RowIsVisible(row + 1)) grdRAM_->SetTopRow(grdRAM_->TopRow() + 1);
    if (row > 0 && !grdRAM_->RowIsVisible(row - 1)) grdRAM_->SetTopRow(grdRAM_->TopRow() - 1);
}

void MemoryGrid::ShowEditorOver(const QModelIndex& cell) {
    const QRect place = grdRAM_->visualRect(cell);
    txtEdit_->setGeometry(QRect(grdRAM_->viewport()->mapTo(this, place.topLeft()), place.size()));
    txtEdit_->show();
    editorCell_ = cell;
    SetEditorText(TextOf(cell));
    DescribeEditor();
    txtEdit_->setFocus();
    txtEdit_->selectAll();
}

void MemoryGrid::HideEditor() {
    if (window()->focusWidget() == txtEdit_) grdRAM_->setFocus();
    txtEdit_->hide();
    grdRAM_->FrameCell({});
}

void MemoryGrid::grdRAM_Scroll() {
    if (!formattingGrid_) HideEditor();
}

void MemoryGrid::txtEdit_Edited() {
    const std::u16string text = txtEdit_->text().toStdU16String();
    const auto cut = CutInsertedText(editorText_.toStdU16String(), text, txtEdit_->cursorPosition());
    if (cut != text) txtEdit_->setText(cut ? QString::fromStdU16String(*cut) : editorText_);
    if (!cut) return;
    editorText_ = txtEdit_->text();
    textIsPending_ = true;
    StorePendingText(grdRAM_->currentIndex());
}

void MemoryGrid::txtEdit_KeyUp(int key) {
    StorePendingText(grdRAM_->currentIndex());
    // A key that moved here from the grid and is only now released has done its work.
    const bool isHeldFromGrid = key == keyHeldFromGrid_;
    if (isHeldFromGrid) keyHeldFromGrid_ = 0;
    const QModelIndex cell = grdRAM_->currentIndex();
    if (isHeldFromGrid || !MemoryModel::IsDataCell(cell)) return;
    if (key == Qt::Key_Up && cell.row() > 0) grdRAM_->setCurrentIndex(cell.siblingAtRow(cell.row() - 1));
    if (key == Qt::Key_Down && cell.row() < lastRow) grdRAM_->setCurrentIndex(cell.siblingAtRow(cell.row() + 1));
}

QString MemoryGrid::TextOf(const QModelIndex& cell) const {
    return cell.data(Qt::DisplayRole).toString();
}

void MemoryGrid::SetEditorText(const QString& text) {
    editorText_ = text;
    txtEdit_->setText(text);
}

// What is being typed stays as it is, with its caret, while it means the byte that the editor's cell shows.
void MemoryGrid::GiveEditorItsByte() {
    textIsPending_ = false;
    if (!editorCell_.isValid() || ReadByteText(editorText_.toStdU16String()) == model_->Byte(editorCell_)) return;
    SetEditorText(TextOf(editorCell_));
    txtEdit_->selectAll();
    DescribeEditor();
}

// Tells what the cell tells, which the editor covers: in words, and by the colour of the text, which is the ground of a
// selected one.
void MemoryGrid::DescribeEditor() {
    if (!editorCell_.isValid() || !MemoryModel::IsDataCell(grdRAM_->currentIndex())) return;
    // The one that keys go to, which is the one below where the editor has stayed over its last.
    const QModelIndex target = grdRAM_->currentIndex();
    const QModelIndex address = target.siblingAtColumn(target.column() - 1);
    const QString kind = model_->headerData(address.column(), Qt::Horizontal, Qt::DisplayRole).toString();
    txtEdit_->setAccessibleName(kind + ' ' + TextOf(address));
    grdRAM_->FrameCell(target == editorCell_ || txtEdit_->isHidden() ? QModelIndex() : target);
    const bool hasChanged = model_->HasChanged(editorCell_);
    QPalette palette;
    palette.setColor(QPalette::Text, hasChanged ? platform::ChangedText : Qt::black);
    palette.setColor(QPalette::Highlight, hasChanged ? platform::ChangedText : platform::NextText);
    if (palette != txtEdit_->palette()) txtEdit_->setPalette(palette);
}

// Over the editor it is that of the cell that keys go to.
void MemoryGrid::ShowTip(const QModelIndex& cell) {
    const bool isUnderEditor = cell == editorCell_ && txtEdit_->isVisible();
    const QModelIndex shown = isUnderEditor ? grdRAM_->currentIndex() : cell;
    constexpr int rowsLeftFree = 3;
    grdRAM_->ShowTipBeside(cell, rowsLeftFree, shown.data(Qt::ToolTipRole).toString());
}

// Puts what the editor holds into a cell, if it has been typed there since the editor took its byte. No cell but its
// own takes the text of a hidden editor.
void MemoryGrid::StorePendingText(const QModelIndex& cell) {
    if (!textIsPending_ || !MemoryModel::IsDataCell(cell) || (txtEdit_->isHidden() && cell != editorCell_)) return;
    const std::optional<std::uint8_t> byte = ReadByteText(editorText_.toStdU16String());
    if (!byte) return;
    const bool isNew = *byte != model_->Byte(cell);
    model_->Store(cell, *byte);
    textIsPending_ = false;
    platform::HideTip();
    DescribeEditor();
    if (isNew) emit Edited();
}

// The grid fills the frame and has an edge of its own, so the frame draws no more than its caption.
void MemoryGrid::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    const QRect line(0, platform::Pixels(lineTop), width(), platform::Pixels(lineHeight));
    painter.drawItemText(line, Qt::AlignLeft | Qt::AlignVCenter, palette(), isEnabled(), title(), QPalette::WindowText);
}

// Tab leads on from byte to byte, row by row, and beyond the last one to the grid. Were it to lead into the program
// text, the next digits would be typed there.
bool MemoryGrid::focusNextPrevChild(bool next) {
    if (!txtEdit_->hasFocus()) return QGroupBox::focusNextPrevChild(next);
    const QModelIndex from = grdRAM_->currentIndex();
    const int bytesInRow = model_->columnCount() / 2;
    const int to = from.row() * bytesInRow + from.column() / 2 + (next ? 1 : -1);
    if (to >= 0 && to < lastRow * bytesInRow)
        grdRAM_->setCurrentIndex(model_->index(to / bytesInRow, 2 * (to % bytesInRow) + 1));
    else
        grdRAM_->setFocus();
    return true;
}

// The wheel over the editor scrolls the grid under it. A press in an editor that has stayed while another cell became
// current goes back to its own cell.
bool MemoryGrid::eventFilter(QObject* watched, QEvent* event) {
    if (watched != txtEdit_) return QGroupBox::eventFilter(watched, event);
    switch (event->type()) {
        case QEvent::Wheel: return QCoreApplication::sendEvent(grdRAM_->viewport(), event) || true;
        case QEvent::ToolTip: ShowTip(editorCell_); return true;
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
            if (grdRAM_->currentIndex() == editorCell_) return false;
            grdRAM_->setCurrentIndex(editorCell_);
            return true;
        default: return false;
    }
}

}  // namespace panels
