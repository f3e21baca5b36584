#include "panels/memory_model.h"

#include <QColor>
#include <algorithm>
#include <utility>

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
    pairs_.clear();
    for (int index = 0; index < list.ColCount(); ++index)
        pairs_.push_back({.IsPort = false, .Start = list.StartAddress(index), .Bytes = {}, .Changed = {}});
    pairs_.emplace_back();
    endResetModel();
}

// Copies what all pairs show, and has those cells painted that showed something else.
template <class Shown, class Source>
void MemoryModel::Take(Shown Pair::*shown, Source& source) {
    QModelIndexList differing;
    for (int column = 1; Pair & pair : pairs_) {
        auto& values = pair.*shown;
        const auto* current = PartOf(source, pair);
        // Mostly the whole pair is as before, and this is found many times faster for all rows than one by one.
        const bool isAsBefore = std::equal(values.begin(), values.end(), current);
        for (int row = 0; row < Rows && !isAsBefore; ++row)
            if (std::exchange(values[static_cast<std::size_t>(row)], current[row]) != current[row])
                differing.append(index(row, column));
        column += 2;
    }
    Repaint(differing);
}

void MemoryModel::TakeFromMachine() {
    Take(&Pair::Bytes, machine_);
}

void MemoryModel::MarkChanges(const m8085::Changes& changes) {
    Take(&Pair::Changed, changes);
}

void MemoryModel::TakeByte(const QModelIndex& cell) {
    Pair& pair = PairOf(cell);
    pair.Bytes[RowOf(cell)] = PartOf(machine_, pair)[cell.row()];
    emit dataChanged(cell, cell);
}

bool MemoryModel::Store(const QModelIndex& cell, std::uint8_t byte) {
    const Pair& pair = PairOf(cell);
    const bool isNew = std::exchange(PartOf(machine_, pair)[cell.row()], byte) != byte;
    for (const QModelIndex& twin : CellsOf(pair.IsPort, AddressOf(cell), 1)) TakeByte(twin);
    return isNew;
}

void MemoryModel::MarkNextAddress(std::optional<std::int32_t> address) {
    if (address == next_) return;
    for (const auto& moved : {std::exchange(next_, address), address})
        if (moved) Repaint(CellsOf(false, *moved, 0));
}

QModelIndexList MemoryModel::CellsOf(bool isPort, std::int32_t address, int columnInPair) const {
    QModelIndexList cells;
    for (int column = columnInPair; const Pair& pair : pairs_) {
        const std::int32_t row = address - pair.Start;
        if (pair.IsPort == isPort && row >= 0 && row < Rows) cells.append(index(row, column));
        column += 2;
    }
    return cells;
}

void MemoryModel::Repaint(const QModelIndexList& cells) {
    // One step of the machine changes very few bytes, and painting their cells alone takes a tenth of the time.
    constexpr qsizetype few = 16;
    if (cells.size() > few) {
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
        return;
    }
    for (const QModelIndex& cell : cells) emit dataChanged(cell, cell);
}

int MemoryModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Rows;
}

int MemoryModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(2 * pairs_.size());
}

QVariant MemoryModel::data(const QModelIndex& cell, int role) const {
    const bool isData = IsDataCell(cell);
    switch (role) {
        case Qt::DisplayRole: return Text(cell);
        case Qt::BackgroundRole: return isData ? QColor(253, 255, 199) : QColor(228, 255, 204);
        case Qt::ForegroundRole: return TextColour(cell);
        case Qt::FontRole: return isData ? dataFont_ : addressFont_;
        case Qt::TextAlignmentRole: return int(Qt::AlignLeft | Qt::AlignVCenter);
        case Qt::ToolTipRole: return Tip(cell);
        case Qt::AccessibleTextRole: return AccessibleText(cell);
        default: return {};
    }
}

QString MemoryModel::Text(const QModelIndex& cell) const {
    const std::int32_t address = AddressOf(cell);
    if (!IsDataCell(cell) && !IsPort(cell.column())) return QString::fromStdString(m8085::FormatHexLong(address));
    const std::uint8_t byte = IsDataCell(cell) ? Byte(cell) : static_cast<std::uint8_t>(address);
    return QString::fromStdString(m8085::FormatHexByte(byte));
}

QColor MemoryModel::TextColour(const QModelIndex& cell) const {
    if (IsDataCell(cell)) return HasChanged(cell) ? platform::ChangedText : Qt::black;
    return IsNext(cell) ? platform::NextText : Qt::black;
}

QString MemoryModel::Place(const QModelIndex& cell) const {
    return (IsPort(cell.column()) ? "Port " : "Address ") + Text(cell.siblingAtColumn(cell.column() / 2 * 2));
}

QString MemoryModel::Tip(const QModelIndex& cell) const {
    const std::int32_t address = AddressOf(cell);
    const std::uint8_t byte = Byte(cell);
    QString tip = Place(cell) + ", decimal " + QString::number(address) + '\n';
    tip += QString::fromStdString(StoredByteTip(byte));
    if (IsPort(cell.column())) return tip;
    if (const std::string pointers = PointersTip(machine_, address); !pointers.empty())
        tip += '\n' + QString::fromStdString(pointers);
    const bool isNamed = address <= m8085::LastFetchAddress && std::ranges::binary_search(instructions_, address);
    if (!isNamed) return tip;
    // A cell may be older than the instruction, and by hand it may have become a code that is not one.
    const auto bytes = std::span(machine_.Memory).subspan(m8085::Index(address));
    const std::string instruction = assembler::Disassemble(bytes);
    if (bytes[0] == byte && !instruction.empty()) tip += "\nInstruction " + QString::fromStdString(instruction);
    return tip;
}

QString MemoryModel::AccessibleText(const QModelIndex& cell) const {
    if (!IsDataCell(cell)) return Place(cell) + (IsNext(cell) ? ", next instruction" : "");
    return Place(cell) + ", byte " + Text(cell) + (HasChanged(cell) ? ", changed" : "");
}

QVariant MemoryModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) return {};
    if (role == Qt::TextAlignmentRole) return int(Qt::AlignLeft | Qt::AlignVCenter);
    if (role == Qt::ToolTipRole) return HeaderTip(section);
    if (role != Qt::DisplayRole) return {};
    if (IsDataColumn(section)) return "Data";
    return IsPort(section) ? "IO Port" : "Address";
}

QString MemoryModel::HeaderTip(int column) const {
    const bool isPort = IsPort(column);
    if (!IsDataColumn(column)) {
        if (isPort) return "The numbers of all 256 ports";
        return "256 addresses of memory, from " + Text(index(0, column)) + " on";
    }
    const QString bytes = isPort ? "The byte in each port, which IN reads and OUT writes" : "The byte at each address";
    return bytes + "\nClick a byte and type over it";
}

}  // namespace panels
