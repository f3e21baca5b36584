#include "panels/cell_editor.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>

#include "panels/byte_text.h"
#include "platform/fonts.h"
#include "platform/menu.h"
#include "platform/palette.h"
#include "platform/style.h"
#include "platform/tip.h"

namespace panels {

namespace {

constexpr int lastRow = MemoryModel::Rows - 1;

}  // namespace

CellEditor::CellEditor(platform::Grid& grid, MemoryModel& model, QWidget* parent)
    : TextBox("txtEdit", parent), grid_(grid), model_(model) {
    setFont(platform::SansSerif(8.25));
    setFrame(false);
    setTextMargins(1, 0, 0, 1);  // so that its text stands where the cell shows it
    setFocusPolicy(Qt::ClickFocus);
    setText("00");
    SelectAllWhenClicked();
    SetKeyFilter([this](int character) {
        return AcceptsEditorKey(character, static_cast<int>(text().size()), static_cast<int>(selectedText().size()));
    });
    connect(this, &QLineEdit::textEdited, this, &CellEditor::StoreTyped);
    connect(this, &TextBox::KeyReleased, this, &CellEditor::MoveByReleased);
}

void CellEditor::GoTo(const QModelIndex& cell) {
    if (!MemoryModel::IsDataCell(cell)) return Close();
    model_.TakeByte(cell);
    if (cell.row() < lastRow) return OpenOver(cell);
    // What was typed over its own cell is not to be undone here.
    setText(heldText_);
    if (isVisible()) setFocus();
    selectAll();
    Describe();
}

void CellEditor::OpenOver(const QModelIndex& cell) {
    const QRect place = grid_.visualRect(cell);
    setGeometry(QRect(grid_.viewport()->mapTo(parentWidget(), place.topLeft()), place.size()));
    show();
    cell_ = cell;
    SetByteText();
    setFocus();
    selectAll();
}

void CellEditor::Close() {
    if (window()->focusWidget() == this) grid_.setFocus();
    hide();
    grid_.FrameCell({});
}

void CellEditor::TakeByte() {
    if (meant_.isValid() && ReadByteText(heldText_.toStdU16String()) == model_.Byte(meant_)) return;
    SetByteText();
    selectAll();
}

void CellEditor::SetByteText() {
    heldText_ = cell_.data().toString();
    meant_ = cell_;
    setText(heldText_);
    Describe();
}

// The colour of the text is also the background of selected text.
void CellEditor::Describe() {
    const QModelIndex target = grid_.currentIndex();
    if (!cell_.isValid() || !MemoryModel::IsDataCell(target)) return;
    const QModelIndex address = target.siblingAtColumn(target.column() - 1);
    const QString kind = model_.headerData(address.column(), Qt::Horizontal, Qt::DisplayRole).toString();
    setAccessibleName(kind + ' ' + address.data().toString());
    grid_.FrameCell(target == cell_ || isHidden() ? QModelIndex() : target);
    const bool hasChanged = model_.HasChanged(cell_);
    platform::SetColour(*this, QPalette::Text, hasChanged ? platform::ChangedText : Qt::black);
    platform::SetColour(*this, QPalette::Highlight, hasChanged ? platform::ChangedText : platform::NextText);
}

void CellEditor::StoreTyped() {
    const std::u16string typed = text().toStdU16String();
    const auto cut = CutInsertedText(heldText_.toStdU16String(), typed, cursorPosition());
    if (cut != typed) setText(cut ? QString::fromStdU16String(*cut) : heldText_);
    if (!cut) return;
    heldText_ = text();
    const QModelIndex target = grid_.currentIndex();
    const std::optional<std::uint8_t> byte = ReadByteText(*cut);
    if (!byte || !MemoryModel::IsDataCell(target) || (isHidden() && target != cell_)) return;
    const bool isNew = model_.Store(target, *byte);
    meant_ = target;
    platform::HideTip();
    Describe();
    if (isNew) emit Edited();
}

// A key that was pressed elsewhere, as in the grid or in a menu, and is only now released, has done its work there.
void CellEditor::MoveByReleased(int key) {
    if (!pressed_.remove(key)) return;
    const QModelIndex from = grid_.currentIndex();
    const QModelIndex to = from.siblingAtRow(from.row() + (key == Qt::Key_Down) - (key == Qt::Key_Up));
    if (MemoryModel::IsDataCell(to) && to != from) grid_.setCurrentIndex(to);
}

// To the first row, to the last one that it opens over, or by as many rows as are in view.
void CellEditor::keyPressEvent(QKeyEvent* event) {
    const QModelIndex from = grid_.currentIndex();
    const auto goTo = [&](int row) { grid_.setCurrentIndex(from.siblingAtRow(std::clamp(row, 0, lastRow - 1))); };
    pressed_.insert(event->key());
    // Beside the last row, what stands in the box is not there to be deleted until it has been typed there.
    const bool deletes = event->key() == Qt::Key_Backspace || event->key() == Qt::Key_Delete;
    if (deletes && meant_ != from) return event->accept();
    if ((event->modifiers() & ~Qt::KeypadModifier) != 0) return TextBox::keyPressEvent(event);
    switch (event->key()) {
        case Qt::Key_Home: return goTo(0);
        case Qt::Key_End: return goTo(lastRow);
        case Qt::Key_PageUp: return goTo(from.row() - grid_.RowsInView());
        case Qt::Key_PageDown: return goTo(from.row() + grid_.RowsInView());
        default: return TextBox::keyPressEvent(event);
    }
}

// Tab moves from byte to byte, row by row, and from the last one to the grid. If it led into the program text, the
// next digits would be typed there.
bool CellEditor::focusNextPrevChild(bool next) {
    const QModelIndex from = grid_.currentIndex();
    const int bytesInRow = model_.columnCount() / 2;
    const int to = from.row() * bytesInRow + from.column() / 2 + (next ? 1 : -1);
    if (to >= 0 && to < lastRow * bytesInRow)
        grid_.setCurrentIndex(model_.index(to / bytesInRow, 2 * (to % bytesInRow) + 1));
    else
        grid_.setFocus();
    return true;
}

// Each key counts where it was pressed.
void CellEditor::focusOutEvent(QFocusEvent* event) {
    TextBox::focusOutEvent(event);
    pressed_.clear();
}

// The wheel scrolls the grid under the editor, and its tooltip is the grid's. What the mouse brings, where another cell
// has become current, goes back to its own.
bool CellEditor::event(QEvent* event) {
    switch (event->type()) {
        case QEvent::Wheel: return QCoreApplication::sendEvent(grid_.viewport(), event) || true;
        case QEvent::ToolTip: emit grid_.TipWanted(cell_); return true;
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
            if (grid_.currentIndex() == cell_) break;
            grid_.setCurrentIndex(cell_);
            KeepAllSelected();
            return true;
        case QEvent::ContextMenu:
        case QEvent::Drop: grid_.setCurrentIndex(cell_); break;
        default: break;
    }
    return TextBox::event(event);
}

void CellEditor::contextMenuEvent(QContextMenuEvent* event) {
    platform::OpenMenu(MakeContextMenu(), grid_.actions(), event->globalPos());
}

// A thin edge shows that it is open.
void CellEditor::paintEvent(QPaintEvent* event) {
    TextBox::paintEvent(event);
    QPainter painter(this);
    platform::DrawEdge(painter, rect(), palette().color(QPalette::Highlight));
}

}  // namespace panels
