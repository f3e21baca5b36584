#pragma once

#include <QAbstractTableModel>
#include <QFont>

#include "panels/memory_snapshot.h"

namespace panels {

// Shows a snapshot of memory and ports in a grid. Rows and columns are those of the snapshot.
class MemoryModel : public QAbstractTableModel {
    Q_OBJECT

public:
    MemoryModel(m8085::MachineState& machine, QObject* parent);

    static bool IsDataCell(const QModelIndex& cell) {
        return cell.isValid() && MemorySnapshot::IsDataColumn(cell.column());
    }

    // What the data cell shows.
    std::uint8_t Byte(const QModelIndex& cell) const { return cells_.Byte(CellAt(cell)); }
    bool HasChanged(const QModelIndex& cell) const { return cells_.HasChanged(CellAt(cell)); }

    // These change the snapshot, and Store the machine, as the operations of the snapshot do, and have the cells
    // painted.
    void FormatFor(const ColumnList& list);
    void TakeFromMachine() { Repaint(cells_.TakeFrom(machine_)); }
    void TakeByte(const QModelIndex& cell);
    void Store(const QModelIndex& cell, std::uint8_t byte) { Repaint(cells_.Store(machine_, CellAt(cell), byte)); }
    void MarkChanges(const m8085::Changes& changes) { Repaint(cells_.MarkChanges(changes)); }
    void MarkNextAddress(std::optional<std::int32_t> address) { Repaint(cells_.MarkNextAddress(address)); }

    // The tooltips of these addresses, in ascending order, name the instruction there.
    void NameInstructionsAt(std::vector<std::int32_t> addresses) { instructions_ = std::move(addresses); }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& cell, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    static MemorySnapshot::Cell CellAt(const QModelIndex& cell) { return {cell.row(), cell.column()}; }
    void Repaint(const std::vector<MemorySnapshot::Cell>& changed);
    QColor TextColour(const QModelIndex& cell) const;
    QString Tip(const QModelIndex& cell) const;
    QString AccessibleText(const QModelIndex& cell) const;
    QString HeaderTip(int column) const;

    m8085::MachineState& machine_;
    std::vector<std::int32_t> instructions_;
    MemorySnapshot cells_;
    QFont addressFont_;
    QFont dataFont_;
};

}  // namespace panels
