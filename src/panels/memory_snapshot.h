#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "machine/machine_state.h"
#include "panels/column_list.h"

namespace panels {

// The cells of the memory grid as the machine was when they were last taken from it. Rows count from 0 to 255. Columns
// come in pairs, an address to the left of its byte: one pair for each entry of the column list, and the I/O ports as
// the last one.
class MemorySnapshot {
public:
    static constexpr int Rows = 256;

    int Columns() const { return static_cast<int>(2 * pairs.size()); }

    // Makes the pairs of a list and the ports, with empty cells.
    void FormatFor(const ColumnList& list);

    struct DataCell {
        int Row;
        int Column;
    };

    // Takes all cells from the machine and tells which data cells have changed: all of them where the cells were empty.
    // Expects a snapshot formatted for this list.
    std::vector<DataCell> TakeFrom(const m8085::MachineState& machine, const ColumnList& list);

    std::string Text(int row, int column) const;

    static bool IsDataColumn(int column) { return column % 2 == 1; }

    // The byte that the data cell shows, and changing it; the machine is not concerned.
    std::uint8_t Byte(int row, int column) const { return PairOf(column).Bytes[static_cast<std::size_t>(row)]; }
    void SetByte(int row, int column, std::uint8_t byte) {
        pairs[static_cast<std::size_t>(column / 2)].Bytes[static_cast<std::size_t>(row)] = byte;
    }

    // The byte that the machine has now where the data cell shows one; 0 for an empty cell.
    std::uint8_t LiveByte(const m8085::MachineState& machine, int row, int column) const;

    // Puts a byte where the data cell shows one: into memory, or into the ports from the last column, at the address
    // shown on its left. An empty cell shows none, and nothing is stored.
    void Store(m8085::MachineState& machine, int row, int column, std::uint8_t byte) const;

private:
    struct Pair {
        std::int32_t Start = 0;
        std::array<std::uint8_t, Rows> Bytes{};
    };

    const Pair& PairOf(int column) const { return pairs[static_cast<std::size_t>(column / 2)]; }
    std::size_t AddressOf(int row, int column) const;
    bool IsPort(int column) const { return column >= Columns() - 2; }

    std::vector<Pair> pairs;
    bool isEmpty = true;
};

}  // namespace panels
