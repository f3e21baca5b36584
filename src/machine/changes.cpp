#include "machine/changes.h"

#include <cstring>

namespace m8085 {

namespace {

template <std::size_t Size>
void AppendDifferences(std::vector<FormerByte>& bytes, bool isPort, const std::array<std::uint8_t, Size>& before,
                       const std::array<std::uint8_t, Size>& after) {
    // Most of memory is the same, and whole pages are compared many times faster than bytes.
    constexpr std::size_t page = 256;
    for (std::size_t start = 0; start < Size; start += page) {
        if (std::memcmp(&before[start], &after[start], page) == 0) continue;
        for (std::size_t place = start; place < start + page; ++place)
            if (before[place] != after[place])
                bytes.push_back({static_cast<std::uint16_t>(place), before[place], isPort});
    }
}

}  // namespace

Difference DifferenceBetween(const MachineState& before, const MachineState& after) {
    Difference difference{before};
    AppendDifferences(difference.Bytes, false, before.Memory, after.Memory);
    AppendDifferences(difference.Bytes, true, before.Ports, after.Ports);
    difference.Bytes.shrink_to_fit();
    return difference;
}

void TakeBack(const Difference& difference, MachineState& machine) {
    static_cast<Registers&>(machine) = difference.Before;
    for (const auto& [address, value, isPort] : difference.Bytes)
        (isPort ? machine.Ports.data() : machine.Memory.data())[address] = value;
}

Changes ChangesIn(const Difference& difference, const Registers& after) {
    Changes changes{.Before = difference.Before, .After = after};
    for (const auto& [address, value, isPort] : difference.Bytes)
        (isPort ? changes.Ports.data() : changes.Memory.data())[address] = true;
    return changes;
}

Changes Between(const MachineState& before, const MachineState& after) {
    return ChangesIn(DifferenceBetween(before, after), after);
}

}  // namespace m8085
