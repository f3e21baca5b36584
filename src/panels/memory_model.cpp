#include "panels/memory_model.h"

#include <QColor>
#include <algorithm>

#include "assembler/disassembly.h"
#include "machine/number_format.h"
#include "panels/tips.h"
#include "platform/fonts.h"
#include "platform/palette.h"

namespace panels {

MemoryModel::MemoryModel(m8085::MachineState& machine, QObject* parent)
    : QAbstractTableModel(parent),
      machine_(machine),
      addressFont_(platform::WindowFont()),
      dataFont_(platform::SansSerif(8.25)) {}

void MemoryModel::FormatFor(const ColumnList& list) {
    beginResetModel();
    cells_.FormatFor(list);
    endResetModel();
}

void MemoryModel::TakeByte(const QModelIndex& cell) {
    cells_.TakeByte(machine_, CellAt(cell));
    emit dataChanged(cell, cell);
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
        case Qt::ForegroundRole: return TextColour(cell);
        case Qt::FontRole: return isData ? dataFont_ : addressFont_;
        case Qt::TextAlignmentRole: return int(Qt::AlignLeft | Qt::AlignVCenter);
        case Qt::ToolTipRole: return Tip(cell);
        case Qt::AccessibleTextRole: return AccessibleText(cell);
        default: return {};
    }
}

QColor MemoryModel::TextColour(const QModelIndex& cell) const {
    if (IsDataCell(cell)) return HasChanged(cell) ? platform::ChangedText : Qt::black;
    return cells_.IsNext(CellAt(cell)) ? platform::NextText : Qt::black;
}

QString MemoryModel::Tip(const QModelIndex& cell) const {
    const std::int32_t address = cells_.AddressOf(CellAt(cell));
    const bool isPort = cells_.IsPort(cell.column());
    const std::uint8_t byte = cells_.Byte(CellAt(cell));
    std::string tip = isPort ? "Port " + m8085::FormatHexByte(static_cast<std::uint8_t>(address))
                             : "Address " + m8085::FormatHexLong(address);
    tip += ", decimal " + std::to_string(address) + '\n' + StoredByteTip(byte);
    if (isPort || address > m8085::LastFetchAddress || !std::ranges::binary_search(instructions_, address))
        return QString::fromStdString(tip);
    // A cell may be older than the instruction, and by hand it may have become a code that is none.
    const auto* opcode = machine_.Memory.data() + address;
    const std::string instruction = assembler::Disassemble({opcode[0], opcode[1], opcode[2]});
    if (*opcode == byte && !instruction.empty()) tip += "\nInstruction " + instruction;
    return QString::fromStdString(tip);
}

QString MemoryModel::AccessibleText(const QModelIndex& cell) const {
    const QString kind = cells_.IsPort(cell.column()) ? "Port " : "Address ";
    const QString address = kind + index(cell.row(), cell.column() / 2 * 2).data().toString();
    if (!IsDataCell(cell)) return cells_.IsNext(CellAt(cell)) ? address + ", next instruction" : address;
    return address + ", byte " + cell.data().toString() + (HasChanged(cell) ? ", changed" : "");
}

QVariant MemoryModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) return {};
    if (role == Qt::TextAlignmentRole) return int(Qt::AlignLeft | Qt::AlignVCenter);
    if (role == Qt::ToolTipRole) return HeaderTip(section);
    if (role != Qt::DisplayRole) return {};
    if (MemorySnapshot::IsDataColumn(section)) return "Data";
    return cells_.IsPort(section) ? "IO Port" : "Address";
}

QString MemoryModel::HeaderTip(int column) const {
    const bool isPort = cells_.IsPort(column);
    if (!MemorySnapshot::IsDataColumn(column)) {
        if (isPort) return "The numbers of all 256 ports";
        return "256 addresses of memory, from " + index(0, column).data().toString() + " on";
    }
    const QString bytes = isPort ? "The byte in each port, which IN reads and OUT writes" : "The byte at each address";
    return bytes + "\nClick a byte and type over it";
}

}  // namespace panels
