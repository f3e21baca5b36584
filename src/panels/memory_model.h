#pragma once

#include <QAbstractTableModel>
#include <QFont>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "machine/changes.h"
#include "panels/column_list.h"

namespace panels {

// The cells of the memory grid, as the machine was when they were last taken from it. Rows count from 0 to 255. Columns
// come in pairs, an address to the left of its byte: one pair for each entry of the column list, and the I/O ports as
// the last one. Whatever changes has its cells painted, and no others.
class MemoryModel : public QAbstractTableModel {
    Q_OBJECT

public:
    static constexpr int Rows = 256;

    MemoryModel(m8085::MachineState& machine, QObject* parent);

    static bool IsDataColumn(int column) { return column % 2 == 1; }
    static bool IsDataCell(const QModelIndex& cell) { return cell.isValid() && IsDataColumn(cell.column()); }

    // Whether a column is one of the two of the ports, and the address of memory, or the number of the port, that the
    // row of the cell is about.
    bool IsPort(int column) const { return column >= columnCount() - 2; }
    std::int32_t AddressOf(const QModelIndex& cell) const { return PairOf(cell).Start + cell.row(); }

    // The byte that the data cell shows, and whether it has changed.
    std::uint8_t Byte(const QModelIndex& cell) const { return PairOf(cell).Bytes[RowOf(cell)]; }
    bool HasChanged(const QModelIndex& cell) const { return PairOf(cell).Changed[RowOf(cell)]; }

    // Makes the pairs of a list and the ports. Every byte is 0 until it is taken from the machine.
    void FormatFor(const ColumnList& list);

    // Takes all bytes from the machine, or that of one data cell alone.
    void TakeFromMachine();
    void TakeByte(const QModelIndex& cell);

    // The cells of the address columns that show this address of memory.
    QModelIndexList AddressCellsOf(std::int32_t address) const { return CellsOf(false, address, 0); }

    // Puts a byte into the machine, at the address that the data cell shows on its left: into memory, or into the ports
    // from the last column. All cells that show this address take the byte. Returns whether another one
    // was there.
    bool Store(const QModelIndex& cell, std::uint8_t byte);

    // Marks the data cells whose bytes have changed, until the next call.
    void MarkChanges(const m8085::Changes& changes);

    // Marks the cells that show this address of memory as that of the next instruction. Without an address none is
    // marked.
    void MarkNextAddress(std::optional<std::int32_t> address);

    // The tooltips of these addresses, in ascending order, name the instruction there.
    void NameInstructionsAt(std::vector<std::int32_t> addresses) { instructions_ = std::move(addresses); }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& cell, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Pair {
        bool IsPort = true;
        std::int32_t Start = 0;
        std::array<std::uint8_t, Rows> Bytes{};
        std::array<bool, Rows> Changed{};
    };

    // Where the machine, or its changes, keep what a pair shows.
    template <class Source>
    static auto* PartOf(Source& source, const Pair& pair) {
        return pair.IsPort ? source.Ports.data() : source.Memory.data() + pair.Start;
    }

    static std::size_t RowOf(const QModelIndex& cell) { return static_cast<std::size_t>(cell.row()); }
    const Pair& PairOf(const QModelIndex& cell) const { return pairs_[static_cast<std::size_t>(cell.column() / 2)]; }
    Pair& PairOf(const QModelIndex& cell) { return pairs_[static_cast<std::size_t>(cell.column() / 2)]; }

    bool IsNext(const QModelIndex& cell) const { return !IsPort(cell.column()) && AddressOf(cell) == next_; }

    // The cells of this address, in the address columns or in the data columns.
    QModelIndexList CellsOf(bool isPort, std::int32_t address, int columnInPair) const;

    template <class Shown, class Source>
    void Take(Shown Pair::*shown, Source& source);
    void Repaint(const QModelIndexList& cells);

    QString Text(const QModelIndex& cell) const;
    QColor TextColour(const QModelIndex& cell) const;
    QString Place(const QModelIndex& cell) const;
    QString Tip(const QModelIndex& cell) const;
    QString AccessibleText(const QModelIndex& cell) const;
    QString HeaderTip(int column) const;

    m8085::MachineState& machine_;
    std::vector<Pair> pairs_;
    std::optional<std::int32_t> next_;
    std::vector<std::int32_t> instructions_;
    QFont addressFont_;
    QFont dataFont_;
};

}  // namespace panels
