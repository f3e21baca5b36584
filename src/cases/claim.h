#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "cases/place.h"
#include "machine/machine_state.h"

namespace cases {

// What is said of the machine: "A=05", "9000=05,06", "port 10-1F=00", "119 T-states", "T-states <= 200",
// "T-states >= 100". Values are hexadecimal, T-states decimal. Of memory and ports the values are for the ones that
// follow each other; for a range there is one for each, or one for all.
class Claim {
public:
    // Throws Misread for a text that is not one.
    explicit Claim(std::string_view text);

    // As it was written.
    const std::string& Text() const { return text_; }

    bool IsOfTStates() const { return isOfTStates_; }

    // Makes it true. It must not be of T-states.
    void Store(m8085::MachineState& machine) const;

    bool Holds(const m8085::MachineState& machine) const;

    // What stands there instead of its values, written in the same way; of many the first sixteen.
    std::string Found(const m8085::MachineState& machine) const;

    // What stands in the first place that has another value than it says, in words: "A is 0E", "9003 was 2B",
    // "128 T-states". It must not hold.
    std::string Contradiction(const m8085::MachineState& machine, std::string_view verb) const;

private:
    bool ReadTStates();
    void ReadValues(std::string_view values);
    int Count() const { return where_.Last - where_.First + 1; }
    int ValueFor(int index) const { return values_[values_.size() == 1 ? 0 : static_cast<std::size_t>(index)]; }

    std::string text_;
    bool isOfTStates_ = false;
    std::uint64_t least_ = 0;  // T-states
    std::uint64_t most_ = std::numeric_limits<std::uint64_t>::max();
    Place where_;
    std::vector<int> values_;
};

// Whether the word T-states is in it, in any spelling.
bool IsAboutTStates(std::string_view text);

// A list of claims and names of files, separated by commas: "list.dat, 9000=05,11, A=07".
struct Claims {
    std::vector<Claim> All;
    std::vector<std::string> Files;
};

// Throws Misread for an item that is neither a claim nor has the form of a file's name, which is a word with a dot
// before its last letters.
Claims ReadClaims(std::string_view text);

// What a program reads from a port, one byte at each IN; after the last one that one again.
struct Feed {
    int Port = 0;
    std::vector<int> Bytes;
};

// Reads "port 0=01,01,00". Throws Misread for a text that is not that.
Feed ReadFeed(std::string_view text);

}  // namespace cases
