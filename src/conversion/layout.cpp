#include "conversion/layout.h"

#include <algorithm>
#include <utility>

#include "assembler/disassembly.h"

namespace conversion {

namespace {

constexpr std::int32_t lastAddress = m8085::MemorySize - 1;

constexpr std::size_t PageOf(std::int32_t address) {
    return static_cast<std::size_t>(address & lastAddress) >> 8;
}

// From the first address to that before the end, which lies above it.
void Mark(std::bitset<256>& pages, std::int32_t first, std::int32_t end) {
    for (std::size_t page = PageOf(first); page <= PageOf(std::min(end - 1, lastAddress)); ++page) pages.set(page);
}

}  // namespace

Layout::Layout(const std::vector<Statement>& statements, bool areAddressesLost, const Notation& notation)
    : statements_(statements), areAddressesLost_(areAddressesLost), notation_(notation), places_(statements.size()) {
    // Twice, since a name may stand in front of its line, also where a size or an origin depends on it.
    for (int pass = 0; pass < 2; ++pass) {
        PlaceStatements();
        DefineNames();
    }
    MoveStatements();
    for (int pass = 0; pass < 2; ++pass) DefineNames();
}

std::optional<Value> Layout::Read(View text, std::size_t line) const {
    const bool isSum = !IsName(text);
    const auto valueOf = [&](View name) {
        const std::u16string key(name);
        std::optional<Value> value;
        if (name == u"$")
            value = Here(line);
        else if (const auto found = names_.find(key); found != names_.end())
            value = found->second;
        else if (const auto before = earlier_.find(key); before != earlier_.end())
            value = before->second;
        const bool isUnclear = ambiguous_.contains(key) || (value && value->Addresses != 0 && isSum && areSumsUnclear_);
        return isUnclear ? std::nullopt : value;
    };
    return ReadExpression(text, valueOf, notation_);
}

std::optional<std::int32_t> Layout::ReadOnly(std::size_t line) const {
    const Statement& statement = statements_[line];
    if (statement.Operands.size() != 1 || statement.RestAt) return {};
    const auto value = Read(statement.Operands[0].Text, line);
    const auto choice = Choose(value, lastAddress);
    return choice ? std::optional(choice->Number) : std::nullopt;
}

std::optional<std::size_t> Layout::InstructionAt(std::int32_t address) const {
    const auto found = lines_.find(address);
    if (found == lines_.end() || !statements_[found->second].IsInstruction()) return {};
    return found->second;
}

bool Layout::HasChanged(std::int32_t address) const {
    const Place* place = PlaceAt(address);
    return place == nullptr ? IsInProgram(address) : place->NewAddress != place->Address;
}

bool Layout::IsLost(const Value& value) const {
    const auto address = static_cast<std::int32_t>(value.Number);
    const auto goesAlong = [&](const Place* place) {
        return place != nullptr && place->NewAddress - place->Address == value.Moved - value.Number;
    };
    const auto isDataNear = [&](std::int32_t distance) {
        const Place* place = PlaceAt(address + distance);
        return goesAlong(place) && place->IsOfData;
    };
    const Place* place = PlaceAt(address);
    if (value.Addresses != 1 || goesAlong(place)) return false;
    if (place == nullptr) return IsInProgram(static_cast<std::int32_t>(value.Moved));
    return place->IsOfData || (!isDataNear(-1) && !isDataNear(1));
}

// Of the statement to which the byte there belonged as the program was written; nullptr if none did.
const Place* Layout::PlaceAt(std::int32_t address) const {
    const auto after = lines_.upper_bound(address);
    if (after == lines_.begin()) return nullptr;
    const Place& place = places_[std::prev(after)->second];
    return address < place.Address + place.Size ? &place : nullptr;
}

void Layout::PlaceStatements() {
    std::int32_t address = m8085::ProgramOrigin;
    int region = 0;
    bool isKnown = !areAddressesLost_;
    areSumsUnclear_ = areAddressesLost_;
    for (std::size_t line = 0; line < statements_.size(); ++line) {
        if (statements_[line].What == Kind::Origin) {
            const auto origin = ReadOnly(line);
            if (origin) address = *origin;
            isKnown = origin && !areAddressesLost_;
            ++region;
        }
        if (const auto listed = statements_[line].Address; listed && (*listed != address || !isKnown)) {
            address = *listed;
            isKnown = !areAddressesLost_;
            ++region;
        }
        const auto size = SizeOf(line);
        places_[line] = {address, address, size.value_or(0), region, false, isKnown};
        isKnown = isKnown && size;
        areSumsUnclear_ = areSumsUnclear_ || !isKnown;
        address = (address + size.value_or(0)) & lastAddress;
    }
}

// Nothing where that cannot be known.
std::optional<std::int32_t> Layout::SizeOf(std::size_t line) const {
    const Statement& statement = statements_[line];
    std::int32_t size = 0;
    switch (statement.What) {
        case Kind::Unknown: return {};
        case Kind::Interrupt: return 1;
        case Kind::Instruction: return assembler::InstructionLength(statement.Row->Opcode);
        case Kind::Space: return ReadOnly(line);
        case Kind::Bytes:
            for (const Operand& operand : statement.Operands)
                size += static_cast<std::int32_t>(operand.IsString() ? operand.Text.size() - 2 : 1);
            break;
        case Kind::Words: size = 2 * static_cast<std::int32_t>(statement.Operands.size()); break;
        default: return 0;
    }
    if (statement.RestAt) return {};
    return size;
}

void Layout::MoveStatements() {
    end_ = m8085::ProgramOrigin;
    for (std::size_t line = 0; line < statements_.size(); ++line)
        if (statements_[line].IsInstruction()) end_ += places_[line].Size;
    FindLinesOfData();
    const auto regions = MoveRegions();
    std::int32_t next = m8085::ProgramOrigin;
    bool isNextKnown = true;
    for (std::size_t line = 0; line < statements_.size(); ++line) {
        Place& place = places_[line];
        if (place.IsKnown && place.Size > 0) lines_.try_emplace(place.Address, line);
        const auto region = regions.find(place.Region);
        const auto distance = region == regions.end() ? std::optional(0) : region->second;
        if (place.IsOfData) {
            place.NewAddress = place.Address + distance.value_or(0);
            place.IsKnown = place.IsKnown && distance;
            continue;
        }
        place.NewAddress = next;
        place.IsKnown = isNextKnown;
        if (statements_[line].IsInstruction()) next += place.Size;
        isNextKnown = isNextKnown && statements_[line].What != Kind::Unknown;
    }
}

// A label belongs to what follows it, and the current address in a sum to what stands before it. Where there is nothing
// between two origins, both are plain addresses.
void Layout::FindLinesOfData() {
    enum Belonging : char { Nowhere, Program, Data };
    const std::size_t count = statements_.size();
    std::vector<Belonging> before(count, Nowhere);
    std::vector<Belonging> after(count, Nowhere);
    const auto own = [this](std::size_t line) {
        if (statements_[line].IsData()) return Data;
        const bool takesRoom = statements_[line].IsInstruction() || statements_[line].What == Kind::Unknown;
        return takesRoom ? Program : Nowhere;
    };
    for (std::size_t line = 1; line < count; ++line)
        if (places_[line].Region == places_[line - 1].Region)
            before[line] = own(line - 1) == Nowhere ? before[line - 1] : own(line - 1);
    for (std::size_t line = count - 1; line-- > 0;)
        if (places_[line].Region == places_[line + 1].Region)
            after[line] = own(line + 1) == Nowhere ? after[line + 1] : own(line + 1);
    for (std::size_t line = 0; line < count; ++line) {
        Belonging first = after[line];
        Belonging second = before[line];
        const std::vector<Operand>& operands = statements_[line].Operands;
        const bool isLikeLabel = operands.size() == 1 && operands[0].Text == u"$";
        if (statements_[line].What == Kind::Equal && !isLikeLabel) std::swap(first, second);
        if (own(line) != Nowhere) first = own(line);
        const Belonging belonging = first == Nowhere ? second : first;
        places_[line].IsOfData = belonging == Data || (belonging == Nowhere && places_[line].Region > 0);
    }
}

// How far the data of those regions go whose place the program needs; nothing where there is no room for them.
std::map<int, std::optional<std::int32_t>> Layout::MoveRegions() const {
    struct Extent {
        std::int32_t First = m8085::MemorySize;
        std::int32_t End = 0;
    };
    std::map<int, Extent> extents;
    for (std::size_t line = 0; line < statements_.size(); ++line) {
        const Place& place = places_[line];
        if (!statements_[line].IsData() || place.Size == 0 || !place.IsKnown) continue;
        Extent& extent = extents[place.Region];
        extent = {std::min(extent.First, place.Address), std::max(extent.End, place.Address + place.Size)};
    }
    Pages used = PagesInUse();
    std::map<int, std::optional<std::int32_t>> distances;
    for (const auto& [region, extent] : extents) {
        if (extent.First < end_ && extent.End > m8085::ProgramOrigin)
            distances[region] = std::nullopt;
        else
            Mark(used, extent.First, extent.End);
    }
    for (auto& [region, distance] : distances) {
        const auto [first, end] = extents[region];
        for (std::int32_t page = end_ | 0xFF; page + end - first <= lastAddress; page += 0x100) {
            Pages wanted;
            Mark(wanted, page + 1, page + 1 + end - first);
            if ((used & wanted).any()) continue;
            used |= wanted;
            distance = page + 1 - first;
            break;
        }
    }
    return distances;
}

// By the program and the addresses that stand in it as numbers.
Layout::Pages Layout::PagesInUse() const {
    Pages used;
    if (end_ > m8085::ProgramOrigin) Mark(used, m8085::ProgramOrigin, end_);
    for (std::size_t line = 0; line < statements_.size(); ++line) {
        if (statements_[line].What != Kind::Instruction) continue;
        for (const Operand& operand : statements_[line].Operands)
            if (const auto value = Read(operand.Text, line); value && value->Addresses == 0)
                used.set(PageOf(static_cast<std::int32_t>(value->Number & lastAddress)));
    }
    return used;
}

void Layout::DefineNames() {
    earlier_ = std::exchange(names_, {});
    for (std::size_t line = 0; line < statements_.size(); ++line) {
        const Statement& statement = statements_[line];
        if (statement.Labels.empty()) continue;
        std::optional<Value> value = Here(line);
        if (statement.What == Kind::Equal) {
            const bool isWhole = statement.Operands.size() == 1 && !statement.RestAt;
            value = isWhole ? Read(statement.Operands[0].Text, line) : std::nullopt;
        }
        for (const Label& label : statement.Labels) Define(label.Name, value);
    }
}

void Layout::Define(const std::u16string& name, const std::optional<Value>& value) {
    const auto [found, isNew] = names_.try_emplace(name, value);
    if (!isNew && (!value || found->second != value)) ambiguous_.insert(name);
}

std::optional<Value> Layout::Here(std::size_t line) const {
    const Place& place = places_[line];
    if (!place.IsKnown) return {};
    return Value{place.Address, place.Address, place.NewAddress, 1};
}

}  // namespace conversion
