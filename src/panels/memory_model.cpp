#include "panels/memory_model.h"

#include <QColor>

#include "platform/fonts.h"

namespace panels {

MemoryModel::MemoryModel(QObject* parent)
    : QAbstractTableModel(parent), addressFont(platform::WindowFont()), dataFont(platform::SansSerif(8.25)) {}

void MemoryModel::FormatFor(const ColumnList& list) {
    beginResetModel();
    cells.FormatFor(list);
    endResetModel();
}

void MemoryModel::TakeFrom(const m8085::MachineState& machine, const ColumnList& list) {
    const std::vector<MemorySnapshot::DataCell> changed = cells.TakeFrom(machine, list);
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

void MemoryModel::SetByte(const QModelIndex& cell, std::uint8_t byte) {
    cells.SetByte(cell.row(), cell.column(), byte);
    emit dataChanged(cell, cell);
}

int MemoryModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : MemorySnapshot::Rows;
}

int MemoryModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : cells.Columns();
}

QVariant MemoryModel::data(const QModelIndex& cell, int role) const {
    const bool isData = MemorySnapshot::IsDataColumn(cell.column());
    switch (role) {
        case Qt::DisplayRole: return QString::fromStdString(cells.Text(cell.row(), cell.column()));
        case Qt::BackgroundRole: return isData ? QColor(253, 255, 199) : QColor(228, 255, 204);
        case Qt::ForegroundRole: return QColor(Qt::black);
        case Qt::FontRole: return isData ? dataFont : addressFont;
        case Qt::TextAlignmentRole: return int(Qt::AlignLeft | Qt::AlignVCenter);
        default: return {};
    }
}

QVariant MemoryModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) return {};
    if (role == Qt::TextAlignmentRole) return int(Qt::AlignLeft | Qt::AlignVCenter);
    if (role != Qt::DisplayRole) return {};
    if (MemorySnapshot::IsDataColumn(section)) return "Data";
    return section == cells.Columns() - 2 ? "IO Port" : "Address";
}

}  // namespace panels
