#include "panels/memory_snapshot.h"

#include <cassert>

#include "machine/number_format.h"

namespace panels {

void MemorySnapshot::FormatFor(const ColumnList& list) {
    pairs.assign(static_cast<std::size_t>(list.ColCount()) + 1, Pair{});
    isEmpty = true;
}

std::vector<MemorySnapshot::DataCell> MemorySnapshot::TakeFrom(const m8085::MachineState& machine,
                                                               const ColumnList& list) {
    assert(Columns() == 2 * list.ColCount() + 2);
    std::vector<DataCell> changed;
    for (int index = 0; index <= list.ColCount(); ++index) {
        const bool isPort = index == list.ColCount();
        Pair& pair = pairs[static_cast<std::size_t>(index)];
        pair.Start = isPort ? 0 : list.StartAddress(index);
        const std::uint8_t* bytes = isPort ? machine.Ports.data() : machine.Memory.data() + pair.Start;
        for (int row = 0; row < Rows; ++row) {
            std::uint8_t& shown = pair.Bytes[static_cast<std::size_t>(row)];
            if (isEmpty || shown != bytes[row]) changed.push_back({row, 2 * index + 1});
            shown = bytes[row];
        }
    }
    isEmpty = false;
    return changed;
}

std::string MemorySnapshot::Text(int row, int column) const {
    if (isEmpty) return {};
    if (IsDataColumn(column)) return m8085::FormatHexByte(Byte(row, column));
    if (IsPort(column)) return m8085::FormatHexByte(static_cast<std::uint8_t>(row));
    return m8085::FormatHexLong(PairOf(column).Start + row);
}

std::size_t MemorySnapshot::AddressOf(int row, int column) const {
    const std::int32_t address = PairOf(column).Start + row;
    return static_cast<std::size_t>(address);
}

std::uint8_t MemorySnapshot::LiveByte(const m8085::MachineState& machine, int row, int column) const {
    if (isEmpty) return 0;
    const std::size_t address = AddressOf(row, column);
    return IsPort(column) ? machine.Ports[address] : machine.Memory[address];
}

void MemorySnapshot::Store(m8085::MachineState& machine, int row, int column, std::uint8_t byte) const {
    if (isEmpty) return;
    const std::size_t address = AddressOf(row, column);
    if (IsPort(column))
        machine.Ports[address] = byte;
    else
        machine.Memory[address] = byte;
}

}  // namespace panels
