#pragma once

#include <QAbstractTableModel>
#include <QFont>

#include "panels/memory_snapshot.h"

namespace panels {

// Shows a snapshot of memory and ports in a grid. Rows and columns are those of the snapshot.
class MemoryModel : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit MemoryModel(QObject* parent);

    static bool IsDataCell(const QModelIndex& cell) {
        return cell.isValid() && MemorySnapshot::IsDataColumn(cell.column());
    }

    // The byte that the data cell shows.
    std::uint8_t Byte(const QModelIndex& cell) const { return cells_.Byte(CellAt(cell)); }

    // These change the snapshot as its own operations do, and have the cells painted.
    void FormatFor(const ColumnList& list);
    void TakeFrom(const m8085::MachineState& machine);
    void TakeByte(const m8085::MachineState& machine, const QModelIndex& cell);
    void Store(m8085::MachineState& machine, const QModelIndex& cell, std::uint8_t byte);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& cell, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    static MemorySnapshot::Cell CellAt(const QModelIndex& cell) { return {cell.row(), cell.column()}; }
    void Repaint(const std::vector<MemorySnapshot::Cell>& changed);

    MemorySnapshot cells_;
    QFont addressFont_;
    QFont dataFont_;
};

}  // namespace panels
