#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace panels {

// The largest address at which a column pair of 256 bytes can start.
inline constexpr std::int32_t HighestStart = 0xFEFF;

enum class AddResult { Added, OutOfRange, NoNumber, Full };

// The memory columns of the grid: the start address of each pair of columns, as the hexadecimal text that the user
// typed, from left to right. Every text in the list names an address from 0 to FEFF.
class ColumnList {
public:
    // A full list can neither grow nor shrink.
    static constexpr int MaxColCount = 51;

    // 8000, 9000 and 9100.
    ColumnList() = default;

    // The list of an earlier session. storedCount is decimal; if it is not a number from 0 to 51, three columns are
    // read. `stored` gives the stored text of a column, by its index from 0, or the fallback where nothing is stored. A
    // text that names no start address becomes the default of its index; beyond the first three it is left out.
    static ColumnList Restored(std::string_view storedCount,
                               const std::function<std::string(int index, const std::string& fallback)>& stored);

    int ColCount() const { return static_cast<int>(starts_.size()); }
    const std::vector<std::string>& ColumnStarts() const { return starts_; }

    // The start address of a pair; index is 0 to ColCount() - 1.
    std::int32_t StartAddress(int index) const;

    bool CanAdd() const { return ColCount() < MaxColCount; }
    bool CanRemove() const { return ColCount() > 0 && ColCount() < MaxColCount; }

    // Adds a pair at the right. OutOfRange for a number above FEFF or with a minus sign, NoNumber for a text that is
    // not hexadecimal; both change nothing. The same address may be added twice.
    AddResult Add(std::string_view start);

    // Removes the first pair whose text is exactly this one. False, and nothing changes, if there is none or if nothing
    // can be removed.
    bool Remove(std::string_view start);

    // The texts that can be removed, joined by ", ".
    std::string Options() const;

private:
    std::vector<std::string> starts_{"8000", "9000", "9100"};
};

}  // namespace panels
