#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "machine/changes.h"
#include "panels/column_list.h"

namespace panels {

// The cells of the memory grid as the machine was when they were last taken from it. Rows count from 0 to 255. Columns
// come in pairs, an address to the left of its byte: one pair for each entry of the column list, and the I/O ports as
// the last one.
class MemorySnapshot {
public:
    static constexpr int Rows = 256;

    struct Cell {
        int Row;
        int Column;
    };

    int Columns() const { return static_cast<int>(2 * pairs_.size()); }

    // Makes the pairs of a list and the ports. Every byte is 0 until it is taken from the machine.
    void FormatFor(const ColumnList& list);

    // Takes all bytes from the machine and tells which data cells have changed.
    std::vector<Cell> TakeFrom(const m8085::MachineState& machine);

    // Takes the byte of one data cell alone.
    void TakeByte(const m8085::MachineState& machine, Cell cell);

    // Puts a byte into the machine, at the address that the data cell shows on its left: into memory, or into the ports
    // from the last column. Returns all cells that show this address; they have taken the byte.
    std::vector<Cell> Store(m8085::MachineState& machine, Cell cell, std::uint8_t byte);

    // Sets the data cells apart whose bytes have changed. Tells which cells were not so before, or are so no more.
    std::vector<Cell> MarkChanges(const m8085::Changes& changes);

    // Sets the cells apart that show this address of memory, as that of the next instruction. Returns them and those
    // that were so before.
    std::vector<Cell> MarkNextAddress(std::optional<std::int32_t> address);

    static bool IsDataColumn(int column) { return column % 2 == 1; }
    bool IsPort(int column) const { return column >= Columns() - 2; }

    // What the cell shows: an address, or a byte.
    std::string Text(Cell cell) const;

    // The byte that the data cell shows, and whether it has changed.
    std::uint8_t Byte(Cell cell) const { return PairOf(cell).Bytes[static_cast<std::size_t>(cell.Row)]; }
    bool HasChanged(Cell cell) const { return PairOf(cell).Changed[static_cast<std::size_t>(cell.Row)]; }

    // The address of memory, or the number of the port, that the row of the cell is about.
    std::int32_t AddressOf(Cell cell) const { return PairOf(cell).Start + cell.Row; }

    // Whether the next instruction is at the address of the row.
    bool IsNext(Cell cell) const { return !IsPort(cell.Column) && AddressOf(cell) == next_; }

private:
    struct Pair {
        bool IsPort = true;
        std::int32_t Start = 0;
        std::array<std::uint8_t, Rows> Bytes{};
        std::array<bool, Rows> Changed{};
    };

    // Where the machine, which may be a constant one, keeps the bytes that a pair shows.
    template <class Machine>
    static auto* BytesBehind(const Pair& pair, Machine& machine) {
        return pair.IsPort ? machine.Ports.data() : machine.Memory.data() + pair.Start;
    }

    const Pair& PairOf(Cell cell) const { return pairs_[static_cast<std::size_t>(cell.Column / 2)]; }
    Pair& PairOf(Cell cell) { return pairs_[static_cast<std::size_t>(cell.Column / 2)]; }

    // The cells of this address, in the address columns or in the data columns.
    std::vector<Cell> CellsOf(bool isPort, std::int32_t address, int columnInPair) const;

    std::vector<Pair> pairs_;
    std::optional<std::int32_t> next_;
};

}  // namespace panels
