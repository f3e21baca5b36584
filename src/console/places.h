#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "datafiles/data_file.h"
#include "machine/machine_state.h"

namespace console {

// What the user asked for cannot be done. The text says why.
struct UsageError : std::runtime_error {
    using runtime_error::runtime_error;
};

// A place in the machine and values for it, as the user wrote them: "A=05", "Z=1", "HL=9000", "9000=05,06", "port
// 10=0F".
class Setting {
public:
    // Throws a UsageError for a text that is none.
    explicit Setting(const std::string& text);

    void Store(m8085::MachineState& machine) const;

    // What the place holds, written in the same way.
    std::string Found(const m8085::MachineState& machine) const;

    bool Holds(const m8085::MachineState& machine) const;

private:
    enum class Kind { Register, Pair, Flag, Memory, Port };

    void FindPlace(std::string_view where);
    int ValueAt(const m8085::MachineState& machine, std::size_t index) const;

    Kind kind_ = Kind::Memory;
    int number_ = 0;  // an index into RegisterNames or Flags, a pair code, an address or a port
    std::vector<int> values_;
};

// What the machine should hold when the program has ended: a setting, or "tstates<=N".
class Expectation {
public:
    // Throws a UsageError for a text that is none.
    explicit Expectation(const std::string& text);

    const std::string& Text() const { return text_; }
    std::string Found(const m8085::MachineState& machine) const;
    bool Holds(const m8085::MachineState& machine) const;

private:
    std::string text_;
    std::vector<Setting> setting_;  // one, or none for T-states
    std::uint64_t mostTStates_ = 0;
};

// The flags by their names, from bit 7 of the flag byte down.
struct FlagName {
    std::string_view Name;
    bool m8085::Registers::*Flag;
};
inline constexpr FlagName Flags[] = {{"S", &m8085::Registers::S},
                                     {"Z", &m8085::Registers::Z},
                                     {"AC", &m8085::Registers::AC},
                                     {"P", &m8085::Registers::P},
                                     {"CY", &m8085::Registers::CY}};

// The registers in the order in which they are shown.
struct RegisterName {
    std::string_view Name;
    std::uint8_t m8085::Registers::*Register;
};
inline constexpr RegisterName RegisterNames[] = {
    {"A", &m8085::Registers::A}, {"B", &m8085::Registers::B}, {"C", &m8085::Registers::C}, {"D", &m8085::Registers::D},
    {"E", &m8085::Registers::E}, {"H", &m8085::Registers::H}, {"L", &m8085::Registers::L}};

// "9000-90FF", in hexadecimal. Throws a UsageError if the text is none, or its first address lies above the last.
memedata::AddressRange ReadRange(const std::string& text);

// Whether the text has the form of a range: two addresses with a "-" between them.
bool LooksLikeRange(std::string_view text);

// A decimal number. Throws a UsageError for any other text, saying what the number is for.
std::uint64_t ReadDecimal(std::string_view digits, const std::string& purpose);

}  // namespace console
