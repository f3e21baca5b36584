#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace assembler {

enum class LabelKind : std::int32_t { Definition = 0, Reference = 1 };

struct LabelEntry {
    std::u16string Name;       // in upper case, without a colon
    std::int32_t Address = 0;  // of a definition its value, of a reference the address of the operand's low byte
    LabelKind Kind = LabelKind::Definition;
    std::int16_t Line = 0;  // of the source, counted from 1
};

// Definitions and references of one assembly, in the order of the source. Slots 0 to 100; a definition in slot 100 is
// not found by FindLabel.
class LabelTable {
public:
    static constexpr int Slots = 101;
    static constexpr int NotFound = 100;

    // False, and nothing is stored, when all slots are in use.
    bool Append(LabelEntry entry);

    int LabelCount() const { return count_; }

    // slot is 0 to LabelCount() - 1.
    const LabelEntry& operator[](int slot) const { return entries_[static_cast<std::size_t>(slot)]; }

    // The lowest slot below 100 in use whose name equals the entry's and whose kind is `kind`; NotFound if none.
    int FindLabel(const LabelEntry& entry, LabelKind kind) const;

private:
    std::array<LabelEntry, Slots> entries_;
    int count_ = 0;
};

}  // namespace assembler
