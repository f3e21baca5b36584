#include "panels/memory_snapshot.h"

#include <algorithm>
#include <utility>

#include "machine/number_format.h"

namespace panels {

void MemorySnapshot::FormatFor(const ColumnList& list) {
    pairs_.clear();
    for (int index = 0; index < list.ColCount(); ++index)
        pairs_.push_back({.IsPort = false, .Start = list.StartAddress(index), .Bytes = {}, .Changed = {}});
    pairs_.emplace_back();
}

std::vector<MemorySnapshot::Cell> MemorySnapshot::TakeFrom(const m8085::MachineState& machine) {
    std::vector<Cell> changed;
    for (int column = 1; Pair & pair : pairs_) {
        const std::uint8_t* bytes = BytesBehind(pair, machine);
        for (int row = 0; row < Rows; ++row) {
            std::uint8_t& shown = pair.Bytes[static_cast<std::size_t>(row)];
            if (shown != bytes[row]) changed.push_back({row, column});
            shown = bytes[row];
        }
        column += 2;
    }
    return changed;
}

void MemorySnapshot::TakeByte(const m8085::MachineState& machine, Cell cell) {
    Pair& pair = PairOf(cell);
    pair.Bytes[static_cast<std::size_t>(cell.Row)] = BytesBehind(pair, machine)[cell.Row];
}

std::vector<MemorySnapshot::Cell> MemorySnapshot::Store(m8085::MachineState& machine, Cell cell, std::uint8_t byte) {
    const Pair& pair = PairOf(cell);
    BytesBehind(pair, machine)[cell.Row] = byte;
    std::vector<Cell> showing = CellsOf(pair.IsPort, AddressOf(cell), 1);
    for (const Cell twin : showing) TakeByte(machine, twin);
    return showing;
}

std::vector<MemorySnapshot::Cell> MemorySnapshot::MarkChanges(const m8085::Changes& changes) {
    std::vector<Cell> differing;
    for (int column = 1; Pair & pair : pairs_) {
        const bool* marks = BytesBehind(pair, changes);
        // Mostly the whole pair is as before, and this is told many times faster for all rows than one by one.
        const bool isAsBefore = std::equal(pair.Changed.begin(), pair.Changed.end(), marks);
        for (int row = 0; row < Rows && !isAsBefore; ++row) {
            bool& isMarked = pair.Changed[static_cast<std::size_t>(row)];
            if (isMarked != marks[row]) differing.push_back({row, column});
            isMarked = marks[row];
        }
        column += 2;
    }
    return differing;
}

std::vector<MemorySnapshot::Cell> MemorySnapshot::MarkNextAddress(std::optional<std::int32_t> address) {
    if (address == next_) return {};
    std::vector<Cell> differing;
    for (const auto& moved : {std::exchange(next_, address), address}) {
        if (!moved) continue;
        const std::vector<Cell> cells = CellsOf(false, *moved, 0);
        differing.insert(differing.end(), cells.begin(), cells.end());
    }
    return differing;
}

std::vector<MemorySnapshot::Cell> MemorySnapshot::CellsOf(bool isPort, std::int32_t address, int columnInPair) const {
    std::vector<Cell> cells;
    for (int column = columnInPair; const Pair& pair : pairs_) {
        const std::int32_t row = address - pair.Start;
        if (pair.IsPort == isPort && row >= 0 && row < Rows) cells.push_back({row, column});
        column += 2;
    }
    return cells;
}

std::string MemorySnapshot::Text(Cell cell) const {
    if (IsDataColumn(cell.Column)) return m8085::FormatHexByte(Byte(cell));
    if (IsPort(cell.Column)) return m8085::FormatHexByte(static_cast<std::uint8_t>(cell.Row));
    return m8085::FormatHexLong(AddressOf(cell));
}

}  // namespace panels
