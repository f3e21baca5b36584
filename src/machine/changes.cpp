#include "machine/changes.h"

#include <algorithm>
#include <functional>

namespace m8085 {

namespace {

template <std::size_t Size>
void MarkDifferences(std::array<bool, Size>& marks, const std::array<std::uint8_t, Size>& before,
                     const std::array<std::uint8_t, Size>& after) {
    // Most of memory is the same, and whole pages are compared many times faster than bytes.
    constexpr std::ptrdiff_t page = 256;
    for (std::ptrdiff_t start = 0; start < std::ptrdiff_t{Size}; start += page) {
        const auto from = before.begin() + start;
        if (std::equal(from, from + page, after.begin() + start)) continue;
        std::transform(from, from + page, after.begin() + start, marks.begin() + start, std::not_equal_to());
    }
}

}  // namespace

Changes Between(const MachineState& before, const MachineState& after) {
    Changes changes{.Before = before, .After = after};
    MarkDifferences(changes.Memory, before.Memory, after.Memory);
    MarkDifferences(changes.Ports, before.Ports, after.Ports);
    return changes;
}

}  // namespace m8085
