#include "platform/grid.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>

#include "platform/fonts.h"
#include "platform/style.h"
#include "platform/tip.h"

namespace platform {

namespace {

constexpr int heightOfRows = 16;

// Home, End, the arrows and the two page keys, which Qt numbers one after the other.
bool IsCursorKey(int key) {
    return key >= Qt::Key_Home && key <= Qt::Key_PageDown;
}

}  // namespace

Grid::Grid(const QString& name, QWidget* parent) : QTableView(parent) {
    setObjectName(name);
    setFont(WindowFont());
    setSelectionMode(NoSelection);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollMode(ScrollPerItem);
    setTextElideMode(Qt::ElideNone);

    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(heightOfRows);
    verticalHeader()->setDefaultSectionSize(heightOfRows);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setFont(WindowFont());
    horizontalHeader()->setMinimumSectionSize(1);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setHighlightSections(false);

    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &Grid::Scrolled);
    connect(horizontalScrollBar(), &QScrollBar::valueChanged, this, &Grid::Scrolled);
}

int Grid::TopRow() const {
    return verticalScrollBar()->value();
}

void Grid::SetTopRow(int row) {
    verticalScrollBar()->setValue(row);
}

bool Grid::RowIsVisible(int row) const {
    const int top = rowViewportPosition(row);
    return top >= 0 && top + heightOfRows <= viewport()->height();
}

bool Grid::ColumnIsVisible(int column) const {
    const int left = columnViewportPosition(column);
    return left >= 0 && left + columnWidth(column) <= viewport()->width();
}

int Grid::RowsInView() const {
    return viewport()->height() / heightOfRows;
}

void Grid::SetCurrentCellInPlace(const QModelIndex& cell) {
    setAutoScroll(false);
    setCurrentIndex(cell);
    setAutoScroll(true);
}

void Grid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    if (current.isValid()) emit RowColChange(current);
}

void Grid::keyPressEvent(QKeyEvent* event) {
    if (IsCursorKey(event->key()))
        QTableView::keyPressEvent(event);
    else
        event->ignore();
}

// Drawing the mouse over cells with the button down does not move the current cell.
void Grid::mouseMoveEvent(QMouseEvent* event) {
    event->accept();
}

void Grid::FrameCell(const QModelIndex& cell) {
    if (cell == framed_) return;
    framed_ = cell;
    viewport()->update();
}

void Grid::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    if (!framed_.isValid()) return;
    QPainter painter(viewport());
    DrawEdge(painter, visualRect(framed_), palette().color(QPalette::Highlight));
}

void Grid::ShowTipBeside(const QModelIndex& cell, int rowsBelow, const QString& text) {
    const QRect row = visualRect(cell);
    const QRect free = row.adjusted(0, 0, 0, rowsBelow * heightOfRows);
    ShowTip({viewport()->mapToGlobal(free.topLeft()), free.size()}, text, *viewport());
}

bool Grid::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QTableView::viewportEvent(event);
    const QModelIndex cell = indexAt(static_cast<QHelpEvent*>(event)->pos());
    if (cell.isValid()) emit TipWanted(cell);
    return true;
}

}  // namespace platform
