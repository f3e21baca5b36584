#include "panels/column_list.h"

#include <algorithm>
#include <charconv>

#include "machine/number_format.h"

namespace panels {

namespace {

// The value of a text of hexadecimal digits alone, in either case and of any length; nothing for any other text. Values
// above FEFF all read as the one behind it.
std::optional<std::int32_t> ReadAddress(std::string_view text) {
    if (text.empty()) return std::nullopt;
    std::int32_t value = 0;
    for (const char character : text) {
        const int digit = m8085::HexDigitValue(static_cast<unsigned char>(character));
        if (digit < 0) return std::nullopt;
        value = std::min(value * 16 + digit, HighestStart + 1);
    }
    return value;
}

bool IsStartAddress(std::string_view text) {
    const std::optional<std::int32_t> address = ReadAddress(text);
    return address && *address <= HighestStart;
}

int ReadCount(std::string_view text, int fallback) {
    int count = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    const bool isNumber = error == std::errc() && end == text.data() + text.size();
    return isNumber && count >= 0 && count <= ColumnList::MaxColCount ? count : fallback;
}

}  // namespace

ColumnList ColumnList::Restored(std::string_view storedCount,
                                const std::function<std::string(int index, const std::string& fallback)>& stored) {
    const std::vector<std::string> defaults = ColumnList().starts;
    const int count = ReadCount(storedCount, static_cast<int>(defaults.size()));
    ColumnList list;
    list.starts.clear();
    for (int index = 0; index < count; ++index) {
        const auto place = static_cast<std::size_t>(index);
        const std::string fallback = place < defaults.size() ? defaults[place] : std::string();
        const std::string text = stored(index, fallback);
        if (IsStartAddress(text))
            list.starts.push_back(text);
        else if (!fallback.empty())
            list.starts.push_back(fallback);
    }
    return list;
}

std::int32_t ColumnList::StartAddress(int index) const {
    return ReadAddress(starts[static_cast<std::size_t>(index)]).value_or(0);
}

AddResult ColumnList::Add(std::string_view start) {
    if (!CanAdd()) return AddResult::Full;
    const bool isNegative = start.starts_with('-');
    const std::optional<std::int32_t> address = ReadAddress(start.substr(isNegative ? 1 : 0));
    if (!address) return AddResult::NoNumber;
    if (isNegative || *address > HighestStart) return AddResult::OutOfRange;
    starts.emplace_back(start);
    return AddResult::Added;
}

bool ColumnList::Remove(std::string_view start) {
    const auto found = std::find(starts.begin(), starts.end(), start);
    if (!CanRemove() || found == starts.end()) return false;
    starts.erase(found);
    return true;
}

std::string ColumnList::Options() const {
    std::string options;
    for (const std::string& start : starts) {
        if (!options.empty()) options += ", ";
        options += start;
    }
    return options;
}

}  // namespace panels
