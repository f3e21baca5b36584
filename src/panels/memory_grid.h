#pragma once

#include <QGroupBox>
#include <QModelIndex>

#include "machine/machine_state.h"
#include "panels/cell_editor.h"
#include "panels/column_list.h"
#include "panels/memory_model.h"
#include "platform/grid.h"

namespace panels {

// Shows ranges of memory and all ports side by side, and lets the user type over any byte shown. The grid only
// displays, and shows what the latest RefreshRAMDisplay found; its one editor is moved over the cell being edited.
class MemoryGrid : public QGroupBox {
    Q_OBJECT

public:
    MemoryGrid(m8085::MachineState& machine, ColumnList& columns, QWidget* parent);

    // Sets the grid up for the columns of the list, with bytes that RefreshRAMDisplay has yet to take from the machine.
    // The last row of the last column becomes current.
    void FormatGrid();

    // Rewrites all cells from the machine, and gives the editor the byte of its cell.
    void RefreshRAMDisplay();

    // Does the same for the current cell and the editor alone, for a command that changes memory and leaves the grid as
    // it is: the editor must not show an old byte, to which digits would be added.
    void RefreshCurrentCell();

    // Colours the bytes that have changed, and the address of the next instruction, until the next call. Without an
    // address none is coloured.
    void MarkChanges(const m8085::Changes& changes);
    void MarkNextAddress(std::optional<std::int32_t> address) { model_->MarkNextAddress(address); }

    // Scrolls to the address in PC where a column in view shows it; but not while a cell is open for typing.
    void BringNextIntoView();

    // Gives the focus to the current byte, opened for typing; to the first one in view where that cannot be opened.
    void TakeFocus();

    // What the row of the current cell is about: an address of memory, or a port.
    struct PlaceInMachine {
        bool IsPort;
        std::int32_t Number;
    };
    PlaceInMachine CurrentPlace() const;

    // The tooltips of these addresses, in ascending order, name the instruction there: those of the program that is
    // assembled. Clear removes them.
    void NameInstructionsAt(std::vector<std::int32_t> addresses);

    // The commands of the buttons and of the same entries in the Memory menu.
    void cmdClear_Click();
    void cmdAdd_Click();
    void cmdRemove_Click();

    // Asks for an address and makes its byte the current cell.
    void mnuGoTo_Click();

signals:
    // Clear has erased the assembled program from memory.
    void Cleared();

    // The user has changed a byte.
    void Edited();

    // Columns have been added or removed.
    void ColumnsChanged();

    // The user has asked to see something new, which stands here in this panel, in pixels.
    void Shown(const QRect& place);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void grdRAM_RowColChange(const QModelIndex& cell);
    void ShowNewestPair();
    void GoTo(const QModelIndex& cell);
    QRect PlaceOf(const QModelIndex& cell) const;
    void ShowTip(const QModelIndex& cell);

    m8085::MachineState& machine_;
    ColumnList& columns_;

    platform::Grid* grdRAM_;
    MemoryModel* model_;
    CellEditor* txtEdit_;
};

}  // namespace panels
