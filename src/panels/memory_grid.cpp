#include "panels/memory_grid.h"

#include <QSignalBlocker>
#include <QStylePainter>
#include <algorithm>

#include "machine/number_format.h"
#include "platform/dialogs.h"
#include "platform/fonts.h"
#include "platform/tip.h"
#include "platform/twips.h"

namespace panels {

namespace {

// The caption and the buttons share a line above the grid.
constexpr int lineTop = 60;
constexpr int lineHeight = 360;

constexpr int addressWidth = platform::Pixels(760);
constexpr int dataWidth = platform::Pixels(500);

}  // namespace

MemoryGrid::MemoryGrid(m8085::MachineState& machine, ColumnList& columns, QWidget* parent)
    : QGroupBox("Memory", parent),
      machine_(machine),
      columns_(columns),
      grdRAM_(new platform::Grid("grdRAM", this)),
      model_(new MemoryModel(machine, grdRAM_)),
      txtEdit_(new CellEditor(*grdRAM_, *model_, this)) {
    setObjectName("frmRAM");
    setFont(platform::WindowFont());
    grdRAM_->setAccessibleName("Memory and ports");
    platform::Place(*grdRAM_, 0, 480, 4575, 5055);
    grdRAM_->setModel(model_);
    connect(grdRAM_, &platform::Grid::RowColChange, this, &MemoryGrid::grdRAM_RowColChange);
    connect(grdRAM_, &platform::Grid::TipWanted, this, &MemoryGrid::ShowTip);
    connect(grdRAM_, &platform::Grid::Scrolled, txtEdit_, &CellEditor::Close);
    connect(txtEdit_, &CellEditor::Edited, this, &MemoryGrid::Edited);
}

void MemoryGrid::FormatGrid() {
    const QSignalBlocker formatting(grdRAM_);
    // The cell under the editor is not the current one any more.
    txtEdit_->Close();
    model_->FormatFor(columns_);
    for (int column = 0; column < model_->columnCount(); ++column)
        grdRAM_->setColumnWidth(column, MemoryModel::IsDataColumn(column) ? dataWidth : addressWidth);
    grdRAM_->SetCurrentCellInPlace(model_->index(MemoryModel::Rows - 1, model_->columnCount() - 1));
}

void MemoryGrid::RefreshRAMDisplay() {
    platform::HideTip();
    model_->TakeFromMachine();
    txtEdit_->TakeByte();
}

void MemoryGrid::RefreshCurrentCell() {
    for (const QModelIndex& cell : {grdRAM_->currentIndex(), txtEdit_->Cell()})
        if (MemoryModel::IsDataCell(cell)) model_->TakeByte(cell);
    txtEdit_->TakeByte();
}

void MemoryGrid::MarkChanges(const m8085::Changes& changes) {
    model_->MarkChanges(changes);
    txtEdit_->Describe();
}

void MemoryGrid::NameInstructionsAt(std::vector<std::int32_t> addresses) {
    platform::HideTip();
    model_->NameInstructionsAt(std::move(addresses));
}

// Who has scrolled to other columns, such as the ports or the stack, watches those.
void MemoryGrid::BringNextIntoView() {
    QModelIndexList cells = model_->AddressCellsOf(machine_.PC);
    cells.removeIf([this](const QModelIndex& cell) { return !grdRAM_->ColumnIsVisible(cell.column()); });
    const auto isVisible = [this](const QModelIndex& cell) { return grdRAM_->IsVisible(cell); };
    if (txtEdit_->isVisible() || cells.empty() || std::ranges::any_of(cells, isVisible)) return;
    grdRAM_->scrollTo(cells.front());
}

void MemoryGrid::TakeFocus() {
    const QModelIndex current = grdRAM_->currentIndex();
    const bool canOpen = MemoryModel::IsDataCell(current) && current.row() + 1 < MemoryModel::Rows;
    int column = 1;
    while (column + 2 < model_->columnCount() && !grdRAM_->ColumnIsVisible(column)) column += 2;
    GoTo(canOpen ? current : model_->index(grdRAM_->TopRow(), column));
}

void MemoryGrid::GoTo(const QModelIndex& cell) {
    grdRAM_->setCurrentIndex(cell);
    grdRAM_->scrollTo(cell);
    txtEdit_->GoTo(cell);
    emit Shown(PlaceOf(cell));
}

QRect MemoryGrid::PlaceOf(const QModelIndex& cell) const {
    const QRect place = grdRAM_->visualRect(cell);
    return {grdRAM_->viewport()->mapTo(this, place.topLeft()), place.size()};
}

MemoryGrid::PlaceInMachine MemoryGrid::CurrentPlace() const {
    const QModelIndex cell = grdRAM_->currentIndex();
    return {model_->IsPort(cell.column()), model_->AddressOf(cell)};
}

void MemoryGrid::mnuGoTo_Click() {
    constexpr auto title = "Go to Address";
    constexpr std::int32_t last = m8085::MemorySize - 1;
    const auto tell = [this](const QString& text) {
        platform::ShowMessage(*this, text, QMessageBox::Information, title);
    };
    const QString answer = platform::AskText(*this, "Enter an address", title);
    if (answer.isEmpty()) return;
    const std::optional<std::int32_t> address = m8085::ReadHexNumber(answer.toStdU16String(), last);
    if (!address || *address > last) return tell("Enter an address from 0000 to FFFF.");
    const QModelIndexList cells = model_->AddressCellsOf(*address);
    if (cells.empty())
        return tell("No column shows " + QString::fromStdString(m8085::FormatHexLong(*address)) +
                    ". Add Column shows 256 bytes from any address up to FEFF.");
    const auto opens = [](const QModelIndex& cell) { return cell.row() + 1 < MemoryModel::Rows; };
    const auto found = std::ranges::find_if(cells, opens);
    const QModelIndex& cell = found == cells.end() ? cells.front() : *found;
    grdRAM_->setFocus();
    GoTo(cell.siblingAtColumn(cell.column() + 1));
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
            ShowNewestPair();
            emit ColumnsChanged();
            break;
        case AddResult::OutOfRange:
            platform::ShowMessage(*this, "The starting address must be between 0 and FEFF", QMessageBox::Information,
                                  title);
            break;
        case AddResult::NoNumber:
        case AddResult::Full: break;
    }
}

// It is the last one before the ports.
void MemoryGrid::ShowNewestPair() {
    const QModelIndex byte = model_->index(grdRAM_->TopRow(), model_->columnCount() - 3);
    const QModelIndex address = byte.siblingAtColumn(byte.column() - 1);
    for (const QModelIndex& cell : {byte, address}) grdRAM_->scrollTo(cell);
    emit Shown(PlaceOf(address) | PlaceOf(byte));
}

void MemoryGrid::cmdRemove_Click() {
    if (!columns_.CanRemove()) return;
    const QString options = QString::fromStdString(columns_.Options());
    const QString answer =
        platform::AskText(*this, "Enter a starting address. Your options are:\r\n" + options, "Remove Column");
    if (!columns_.Remove(answer.toStdString())) return;
    FormatGrid();
    RefreshRAMDisplay();
    emit ColumnsChanged();
}

// A row of data stays in view above and below the cell that the editor opens over. Above the first row is the header.
void MemoryGrid::grdRAM_RowColChange(const QModelIndex& cell) {
    const int row = cell.row();
    if (MemoryModel::IsDataCell(cell) && row + 1 < MemoryModel::Rows) {
        if (!grdRAM_->RowIsVisible(row + 1)) grdRAM_->SetTopRow(grdRAM_->TopRow() + 1);
        if (row > 0 && !grdRAM_->RowIsVisible(row - 1)) grdRAM_->SetTopRow(grdRAM_->TopRow() - 1);
    }
    txtEdit_->GoTo(cell);
}

// Over the editor, the tooltip is that of the cell into which keys type.
void MemoryGrid::ShowTip(const QModelIndex& cell) {
    const bool isUnderEditor = cell == txtEdit_->Cell() && txtEdit_->isVisible();
    const QModelIndex shown = isUnderEditor ? grdRAM_->currentIndex() : cell;
    constexpr int rowsLeftFree = 3;
    grdRAM_->ShowTipBeside(cell, rowsLeftFree, shown.data(Qt::ToolTipRole).toString());
}

// The grid fills the frame and has an edge of its own, so the frame draws no more than its caption.
void MemoryGrid::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    const QRect line(0, platform::Pixels(lineTop), width(), platform::Pixels(lineHeight));
    painter.drawItemText(line, Qt::AlignLeft | Qt::AlignVCenter, palette(), isEnabled(), title(), QPalette::WindowText);
}

}  // namespace panels
