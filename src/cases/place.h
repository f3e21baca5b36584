#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "machine/machine_state.h"

namespace cases {

// A text does not say what it should. The message quotes it, and says how it is written.
struct Misread : std::runtime_error {
    using runtime_error::runtime_error;
};

// Where values stand in the machine. Of memory and ports it may be more than one.
struct Place {
    enum class Kind { Register, FlagByte, Flag, Pair, AddressRegister, Memory, Port };
    Kind What = Kind::Memory;
    int First = 0;                // an address or a port; else an index into the names of its kind
    int Last = 0;                 // the same as First where there is only one
    std::string_view Label = {};  // the name; empty for memory and ports

    bool IsMany() const { return What == Kind::Memory || What == Kind::Port; }

    // The largest value that it can hold.
    int Largest() const;

    // What it keeps of a value: bits 5, 3 and 1 of the flag byte are always 0.
    int Kept(int value) const;

    // `number` is from First to Last; `value` is from 0 to Largest().
    int Value(const m8085::MachineState& machine, int number) const;
    void Store(m8085::MachineState& machine, int number, int value) const;

    // A value as the place shows it, with as many hexadecimal digits as it has room for.
    std::string Format(int value) const;

    // "A", "HL" or "CY"; "9000" or "port 10" for the first of memory or ports.
    std::string Name() const;
};

// Reads a register (A, B, C, D, E, H, L), F, a flag (S, Z, AC, P, CY), a pair (BC, DE, HL, PSW), SP, PC, an address, a
// port ("port 10") or a range of either ("9000-90FF", "port 10-1F"), in upper or lower case. A name comes before an
// address, which can be written with a leading 0. Throws Misread for any other text.
Place ReadPlace(std::string_view text);

// Whether it has the form of a range: two numbers with a "-" between them.
bool LooksLikeRange(std::string_view text);

// "8000-8003" for "8000:8003", "8000..8003" and their like; nothing for a text that is not meant as a range.
std::optional<std::string> RangeMeantBy(std::string_view text);

// A hexadecimal number, perhaps with a final H or a leading 0x, in upper or lower case. A number above `largest` reads
// as the one after it. Nothing for any other text.
std::optional<int> ReadNumber(std::string_view text, int largest);

}  // namespace cases
