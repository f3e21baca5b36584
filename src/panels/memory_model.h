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

    const MemorySnapshot& Cells() const { return cells; }

    // These change the snapshot as its own operations do, and have the cells painted.
    void FormatFor(const ColumnList& list);
    void TakeFrom(const m8085::MachineState& machine, const ColumnList& list);
    void SetByte(const QModelIndex& cell, std::uint8_t byte);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& cell, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    MemorySnapshot cells;
    QFont addressFont;
    QFont dataFont;
};

}  // namespace panels
