#include "panels/memory_snapshot.h"

#include <algorithm>

#include "machine/number_format.h"

namespace panels {

void MemorySnapshot::FormatFor(const ColumnList& list) {
    pairs.assign(static_cast<std::size_t>(list.ColCount()) + 1, Pair{});
    isEmpty = true;
}

bool MemorySnapshot::TakeFrom(const m8085::MachineState& machine, const ColumnList& list) {
    bool hasChanged = isEmpty;
    isEmpty = false;
    const auto take = [&hasChanged](Pair& pair, std::int32_t start, const std::uint8_t* bytes) {
        Pair taken{.Start = start};
        std::copy_n(bytes, Rows, taken.Bytes.begin());
        hasChanged = hasChanged || taken != pair;
        pair = taken;
    };
    for (int index = 0; index < list.ColCount(); ++index) {
        const std::int32_t start = list.StartAddress(index);
        take(pairs[static_cast<std::size_t>(index)], start, machine.Memory.data() + start);
    }
    take(pairs.back(), 0, machine.Ports.data());
    return hasChanged;
}

std::string MemorySnapshot::Text(int row, int column) const {
    if (isEmpty) return {};
    if (IsDataColumn(column)) return m8085::FormatHexByte(Byte(row, column));
    if (IsPort(column)) return m8085::FormatHexByte(static_cast<std::uint8_t>(row));
    return m8085::FormatHexLong(PairOf(column).Start + row);
}

void MemorySnapshot::Store(m8085::MachineState& machine, int row, int column, std::uint8_t byte) const {
    if (isEmpty) return;
    const auto address = static_cast<std::size_t>(PairOf(column).Start + row);
    if (IsPort(column))
        machine.Ports[address] = byte;
    else
        machine.Memory[address] = byte;
}

}  // namespace panels
