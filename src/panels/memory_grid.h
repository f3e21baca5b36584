#pragma once

#include <QGroupBox>
#include <QModelIndex>

#include "machine/machine_state.h"
#include "panels/column_list.h"
#include "panels/memory_model.h"
#include "platform/grid.h"
#include "platform/text_box.h"

namespace panels {

// Shows ranges of memory and all ports side by side, and lets the user type over any byte shown. The grid only
// displays, and shows what the latest RefreshRAMDisplay found. The one text box txtEdit is moved over the cell being
// edited; what is typed there goes into the machine at once, digit by digit.
class MemoryGrid : public QGroupBox {
    Q_OBJECT

public:
    MemoryGrid(m8085::MachineState& machine, ColumnList& columnList, QWidget* parent);

    // Sets the grid up for the columns of the list, with cells that are empty until RefreshRAMDisplay fills them. The
    // last row of the last column becomes current.
    void FormatGrid();

    // Rewrites all cells from the machine, and gives the editor the text of the current cell.
    void RefreshRAMDisplay();

    // The commands of the buttons and of their twins in the Memory menu.
    // Rewrites the current cell alone, for a command that changes memory and leaves the grid as it is: the editor over
    // the cell must not write an old byte back when a key is released or the cell is left.
    void RefreshCurrentCell();

    void cmdClear_Click();
    void cmdAdd_Click();
    void cmdRemove_Click();

signals:
    // Clear has wiped the assembled program from memory.
    void Cleared();

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void AddGrid();
    void AddEditor();

    void grdRAM_LeaveCell(const QModelIndex& cell);
    void grdRAM_RowColChange(const QModelIndex& cell);
    void grdRAM_Scroll();
    void txtEdit_Edited();
    void txtEdit_KeyUp(int key);

    QString TextOf(const QModelIndex& cell) const;
    void ScrollBeforeTheEdge(int row);
    void ShowEditorOver(const QModelIndex& cell);
    void HideEditor();
    void GiveEditorTheCurrentByte();
    void StoreEditorText();

    m8085::MachineState& state;
    ColumnList& columns;

    MemoryModel* model = nullptr;
    platform::Grid* grdRAM = nullptr;
    platform::TextBox* txtEdit = nullptr;
    bool formattingGrid = false;
    int keyHeldFromGrid = 0;
};

}  // namespace panels
