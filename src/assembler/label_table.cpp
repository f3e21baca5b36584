#include "assembler/label_table.h"

#include <algorithm>
#include <utility>

namespace assembler {

bool LabelTable::Append(LabelEntry entry) {
    if (count_ == Slots) return false;
    entries_[static_cast<std::size_t>(count_++)] = std::move(entry);
    return true;
}

int LabelTable::FindLabel(const LabelEntry& entry, LabelKind kind) const {
    const int reach = std::min(count_, NotFound);
    for (int slot = 0; slot < reach; ++slot)
        if ((*this)[slot].Kind == kind && (*this)[slot].Name == entry.Name) return slot;
    return NotFound;
}

}  // namespace assembler
