#pragma once

#include <bitset>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "conversion/expression.h"
#include "conversion/statement.h"
#include "machine/address_space.h"

namespace conversion {

// Where a statement stood in the program as it was written, and where it comes to stand; of a line without one, where
// its labels do.
struct Place {
    std::int32_t Address = 0;
    std::int32_t NewAddress = 0;
    std::int32_t Size = 0;  // in bytes
    int Region = 0;         // counts the origins
    bool IsOfData = false;  // that and no instruction stands there
    bool IsKnown = false;   // all statements in front could be understood, as far as it hangs on them
};

// The program's instructions come to stand one after the other from 8000 upward. Its data stay where they are, unless
// the instructions need the room: then all data between two origins go to the first pages that nothing else uses.
class Layout {
public:
    // One statement for each line. An earlier conversion may have taken away what gave the statements their addresses:
    // then only those of the instructions and their labels are known. The statements must outlive this.
    Layout(const std::vector<Statement>& statements, bool areAddressesLost, const Notation& notation);

    const Place& PlaceOf(std::size_t line) const { return places_[line]; }

    // The value of an operand of this line.
    std::optional<Value> Read(std::u16string_view text, std::size_t line) const;

    // The same of the only operand that a statement has, and of an expression that is not an address.
    std::optional<std::int32_t> ReadOnly(std::size_t line) const;

    // Whether lines give the name different values.
    bool IsAmbiguous(const std::u16string& name) const { return ambiguous_.contains(name); }

    // The line whose instruction began at this address as the program was written.
    std::optional<std::size_t> InstructionAt(std::int32_t address) const;

    // Whether this address lay inside the program or does so now, and is not what it was.
    bool HasChanged(std::int32_t address) const;

    // Whether the address that a sum comes to is no longer that of what stood there: "$+6" of data that went elsewhere.
    // The bytes just before and after data go with them.
    bool IsLost(const Value& value) const;

    // Whether it lies there now.
    bool IsInProgram(std::int32_t address) const { return address >= m8085::ProgramOrigin && address < end_; }

private:
    using Pages = std::bitset<256>;

    void PlaceStatements();
    std::optional<std::int32_t> SizeOf(std::size_t line) const;
    void MoveStatements();
    void FindLinesOfData();
    std::map<int, std::optional<std::int32_t>> MoveRegions() const;
    Pages PagesInUse() const;
    void DefineNames();
    void Define(const std::u16string& name, const std::optional<Value>& value);
    std::optional<Value> Here(std::size_t line) const;
    const Place* PlaceAt(std::int32_t address) const;
    const std::vector<Statement>& statements_;
    bool areAddressesLost_;
    bool areSumsUnclear_ = false;  // since some address is not known
    Notation notation_;
    std::vector<Place> places_;
    std::map<std::u16string, std::optional<Value>> names_;
    std::map<std::u16string, std::optional<Value>> earlier_;  // for names that are used before their lines
    std::set<std::u16string> ambiguous_;
    std::map<std::int32_t, std::size_t> lines_;  // with a size, by their old addresses
    std::int32_t end_ = 0;                       // the address after the last instruction
};

}  // namespace conversion
