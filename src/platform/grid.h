#pragma once

#include <QTableView>

namespace platform {

// A grid that only displays: cells of a model under a header row, and one of them the current cell, which a click and
// the cursor keys move. It scrolls by whole rows and columns. All other keys are left to the window.
class Grid : public QTableView {
    Q_OBJECT

public:
    explicit Grid(const QString& name, QWidget* parent);

    // The row shown first under the header; setting it goes as far as the grid can be scrolled.
    int TopRow() const;
    void SetTopRow(int row);

    // Whether the whole of a row, or of a cell, is in view; and how many rows are at a time.
    bool RowIsVisible(int row) const;
    bool ColumnIsVisible(int column) const;
    bool IsVisible(const QModelIndex& cell) const { return viewport()->rect().contains(visualRect(cell)); }
    int RowsInView() const;

    // Makes a cell current without scrolling to it.
    void SetCurrentCellInPlace(const QModelIndex& cell);

    // Draws a frame around a cell; around none for one that is not there.
    void FrameCell(const QModelIndex& cell);

    // Shows a tooltip that leaves the cell's row and so many below it uncovered.
    void ShowTipBeside(const QModelIndex& cell, int rowsBelow, const QString& text);

signals:
    // The current cell has moved to this one.
    void RowColChange(const QModelIndex& cell);

    void Scrolled();

    // The mouse rests on a cell.
    void TipWanted(const QModelIndex& cell);

protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    QPersistentModelIndex framed_;
};

}  // namespace platform
