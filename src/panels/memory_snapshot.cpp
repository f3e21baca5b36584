#include "panels/memory_snapshot.h"

#include "machine/number_format.h"

namespace panels {

void MemorySnapshot::FormatFor(const ColumnList& list) {
    pairs_.clear();
    for (int index = 0; index < list.ColCount(); ++index)
        pairs_.push_back({.IsPort = false, .Start = list.StartAddress(index), .Bytes = {}});
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
    std::uint8_t* const target = BytesBehind(PairOf(cell), machine) + cell.Row;
    *target = byte;
    std::vector<Cell> showing;
    for (int column = 1; Pair & pair : pairs_) {
        if (pair.IsPort == PairOf(cell).IsPort) {
            const std::ptrdiff_t row = target - BytesBehind(pair, machine);
            if (row >= 0 && row < Rows) showing.push_back({static_cast<int>(row), column});
        }
        column += 2;
    }
    for (const Cell twin : showing) TakeByte(machine, twin);
    return showing;
}

std::string MemorySnapshot::Text(Cell cell) const {
    if (IsDataColumn(cell.Column)) return m8085::FormatHexByte(Byte(cell));
    if (IsPort(cell.Column)) return m8085::FormatHexByte(static_cast<std::uint8_t>(cell.Row));
    return m8085::FormatHexLong(PairOf(cell).Start + cell.Row);
}

}  // namespace panels
