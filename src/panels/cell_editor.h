#pragma once

#include <QModelIndex>
#include <QSet>

#include "panels/memory_model.h"
#include "platform/grid.h"
#include "platform/text_box.h"

namespace panels {

// The text box over the grid in which a byte is edited. It holds two hexadecimal digits at most. What is typed goes
// into the machine at once, digit by digit, to the grid's current cell. That is the one under the editor, except in the
// last row: there it does not open, and where it is open already it stays, and types into the row below its own. Home,
// End and the page keys move through the column.
class CellEditor : public platform::TextBox {
    Q_OBJECT

public:
    CellEditor(platform::Grid& grid, MemoryModel& model, QWidget* parent);

    // The cell that it was opened over last.
    QModelIndex Cell() const { return cell_; }

    // Follows the grid to a cell that has become current, and takes the machine's byte. An address cell closes it.
    void GoTo(const QModelIndex& cell);

    // The focus goes to the grid if the editor has it.
    void Close();

    // Shows the byte of its cell. What is being typed stays as it is, with its caret, while it means that byte.
    void TakeByte();

    // Names the address of the byte that is edited, and shows by the colour of the text whether the covered byte has
    // changed.
    void Describe();

signals:
    // Typing has changed a byte.
    void Edited();

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void focusOutEvent(QFocusEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void OpenOver(const QModelIndex& cell);
    void SetByteText();
    void StoreTyped();
    void MoveByReleased(int key);

    platform::Grid& grid_;
    MemoryModel& model_;
    QPersistentModelIndex cell_;
    QPersistentModelIndex meant_;  // whose byte the text is: beside the last row, one there once it has been typed
    QString heldText_;             // since the latest edit, or since it took its byte
    QSet<int> pressed_;            // keys that are down
};

}  // namespace panels
