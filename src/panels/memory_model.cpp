#include "panels/memory_model.h"

#include <QColor>

#include "platform/fonts.h"

namespace panels {

MemoryModel::MemoryModel(QObject* parent)
    : QAbstractTableModel(parent), addressFont_(platform::WindowFont()), dataFont_(platform::SansSerif(8.25)) {}

void MemoryModel::FormatFor(const ColumnList& list) {
    beginResetModel();
    cells_.FormatFor(list);
    endResetModel();
}

void MemoryModel::TakeFrom(const m8085::MachineState& machine) {
    Repaint(cells_.TakeFrom(machine));
}

void MemoryModel::TakeByte(const m8085::MachineState& machine, const QModelIndex& cell) {
    cells_.TakeByte(machine, CellAt(cell));
    emit dataChanged(cell, cell);
}

void MemoryModel::Store(m8085::MachineState& machine, const QModelIndex& cell, std::uint8_t byte) {
    Repaint(cells_.Store(machine, CellAt(cell), byte));
}

void MemoryModel::Repaint(const std::vector<MemorySnapshot::Cell>& changed) {
    // One step of the machine changes very few bytes, and painting their cells alone takes a tenth of the time.
    constexpr std::size_t few = 16;
    if (changed.size() > few) {
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
        return;
    }
    for (const auto [row, column] : changed) {
        const QModelIndex cell = index(row, column);
        emit dataChanged(cell, cell);
    }
}

int MemoryModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : MemorySnapshot::Rows;
}

int MemoryModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : cells_.Columns();
}

QVariant MemoryModel::data(const QModelIndex& cell, int role) const {
    const bool isData = IsDataCell(cell);
    switch (role) {
        case Qt::DisplayRole: return QString::fromStdString(cells_.Text(CellAt(cell)));
        case Qt::BackgroundRole: return isData ? QColor(253, 255, 199) : QColor(228, 255, 204);
        case Qt::ForegroundRole: return QColor(Qt::black);
        case Qt::FontRole: return isData ? dataFont_ : addressFont_;
        case Qt::TextAlignmentRole: return int(Qt::AlignLeft | Qt::AlignVCenter);
        default: return {};
    }
}

QVariant MemoryModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) return {};
    if (role == Qt::TextAlignmentRole) return int(Qt::AlignLeft | Qt::AlignVCenter);
    if (role != Qt::DisplayRole) return {};
    if (MemorySnapshot::IsDataColumn(section)) return "Data";
    return cells_.IsPort(section) ? "IO Port" : "Address";
}

}  // namespace panels
