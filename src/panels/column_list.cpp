#include "panels/column_list.h"

#include <algorithm>

#include "machine/number_format.h"
#include "machine/text.h"

namespace panels {

namespace {

bool IsStartAddress(std::string_view text) {
    const std::optional<std::int32_t> address = m8085::ReadHexNumber(text, HighestStart);
    return address && *address <= HighestStart;
}

int ReadCount(std::string_view text, int fallback) {
    const auto count = m8085::ReadDecimal(text);
    return count && *count <= ColumnList::MaxColCount ? static_cast<int>(*count) : fallback;
}

}  // namespace

ColumnList ColumnList::Restored(std::string_view storedCount,
                                const std::function<std::string(int index, const std::string& fallback)>& stored) {
    const std::vector<std::string> defaults = ColumnList().starts_;
    const int count = ReadCount(storedCount, static_cast<int>(defaults.size()));
    ColumnList list;
    list.starts_.clear();
    for (int index = 0; index < count; ++index) {
        const auto place = static_cast<std::size_t>(index);
        const std::string fallback = place < defaults.size() ? defaults[place] : std::string();
        const std::string text = stored(index, fallback);
        if (IsStartAddress(text))
            list.starts_.push_back(text);
        else if (!fallback.empty())
            list.starts_.push_back(fallback);
    }
    return list;
}

std::int32_t ColumnList::StartAddress(int index) const {
    return m8085::ReadHexNumber(std::string_view(starts_[static_cast<std::size_t>(index)]), HighestStart).value_or(0);
}

AddResult ColumnList::Add(std::string_view start) {
    if (!CanAdd()) return AddResult::Full;
    const bool isNegative = start.starts_with('-');
    const std::optional<std::int32_t> address = m8085::ReadHexNumber(start.substr(isNegative ? 1 : 0), HighestStart);
    if (!address) return AddResult::NoNumber;
    if (isNegative || *address > HighestStart) return AddResult::OutOfRange;
    starts_.emplace_back(start);
    return AddResult::Added;
}

bool ColumnList::Remove(std::string_view start) {
    const auto found = std::find(starts_.begin(), starts_.end(), start);
    if (!CanRemove() || found == starts_.end()) return false;
    starts_.erase(found);
    return true;
}

std::string ColumnList::Options() const {
    return m8085::Joined(starts_, ", ", ", ");
}

}  // namespace panels
