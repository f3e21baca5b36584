#include "cases/place.h"

#include <algorithm>
#include <functional>
#include <iterator>

#include "machine/bytes.h"
#include "machine/number_format.h"
#include "machine/text.h"

namespace cases {

namespace {

using m8085::Trimmed;

constexpr std::string_view portWord = "PORT ";

std::optional<Place> Named(std::string_view upper) {
    const auto find = [upper](Place::Kind kind, const auto& names, auto nameOf) -> std::optional<Place> {
        const auto found = std::ranges::find(names, upper, nameOf);
        if (found == std::end(names)) return std::nullopt;
        const int index = static_cast<int>(found - std::begin(names));
        return Place{kind, index, index, std::invoke(nameOf, *found)};
    };
    using enum Place::Kind;
    if (upper == "F") return Place{FlagByte, 0, 0, "F"};
    if (const auto place = find(Register, m8085::ByteRegisters, &m8085::Named<std::uint8_t>::Name)) return place;
    if (const auto place = find(Flag, m8085::Flags, &m8085::Named<bool>::Name)) return place;
    if (const auto place = find(Pair, m8085::StackPairNames, std::identity{})) return place;
    return find(AddressRegister, m8085::AddressRegisters, &m8085::Named<std::int32_t>::Name);
}

std::string Quoted(std::string_view text) {
    return '"' + std::string(text) + '"';
}

// The numbers on both sides of the sign; the text must not be that of a name.
Place ReadNumbered(Place::Kind kind, std::string_view text, std::string_view numbers) {
    const bool isPort = kind == Place::Kind::Port;
    const int last = isPort ? m8085::PortCount - 1 : m8085::MemorySize - 1;
    const std::size_t sign = std::min(numbers.find('-'), numbers.size());
    const bool isRange = sign < numbers.size();
    const std::string_view first = Trimmed(numbers.substr(0, sign));
    const std::string_view second = isRange ? Trimmed(numbers.substr(sign + 1)) : first;
    if (!isPort && isRange && (Named(m8085::UpperCase(first)) || Named(m8085::UpperCase(second))))
        throw Misread(Quoted(text) + " is not a range of addresses: address A is written 0A there");
    const auto from = ReadNumber(first, last);
    const auto to = ReadNumber(second, last);
    if (!from || !to) {
        if (const auto range = RangeMeantBy(numbers))
            throw Misread(std::string(text) + " is not a range: " + (isPort ? "port " : "") + *range);
        throw Misread(
            Quoted(text) +
            " is not a register (A to L, F), flag (S, Z, AC, P, CY), pair (BC, DE, HL, PSW, SP, PC), address, "
            "port (\"port 10\") or range (9000-90FF)");
    }
    if (*from > last || *to > last)
        throw Misread(Quoted(text) + (isPort ? ": the ports are 00 to FF" : ": the last address is FFFF"));
    if (*from > *to) throw Misread(Quoted(text) + " is not a range: its first address must not be above its last");
    return {kind, *from, *to, {}};
}

}  // namespace

int Place::Largest() const {
    switch (What) {
        case Kind::Flag: return 1;
        case Kind::Pair:
        case Kind::AddressRegister: return 0xFFFF;
        default: return 0xFF;
    }
}

int Place::Kept(int value) const {
    constexpr int flagBits = 0xD5;
    if (What == Kind::FlagByte) return value & flagBits;
    return Label == "PSW" ? value & (0xFF00 | flagBits) : value;
}

int Place::Value(const m8085::MachineState& machine, int number) const {
    const auto index = static_cast<std::size_t>(number);
    switch (What) {
        case Kind::Register: return machine.*m8085::ByteRegisters[index].Member;
        case Kind::FlagByte: return machine.GetFlagByte();
        case Kind::Flag: return m8085::MachineState::FlagBit(machine.*m8085::Flags[index].Member);
        case Kind::Pair: return machine.GetRegPair(m8085::Low(number), true);
        case Kind::AddressRegister: return machine.*m8085::AddressRegisters[index].Member;
        case Kind::Memory: return machine.Memory[index];
        case Kind::Port: return machine.Ports[index];
    }
    return 0;
}

void Place::Store(m8085::MachineState& machine, int number, int value) const {
    const auto index = static_cast<std::size_t>(number);
    switch (What) {
        case Kind::Register: machine.*m8085::ByteRegisters[index].Member = m8085::Low(value); break;
        case Kind::FlagByte: machine.SetPSW(m8085::Join(machine.A, m8085::Low(value))); break;
        case Kind::Flag: machine.*m8085::Flags[index].Member = value != 0; break;
        case Kind::Pair: machine.SetRegPair(m8085::Low(number), m8085::High(value), m8085::Low(value), true); break;
        case Kind::AddressRegister: machine.*m8085::AddressRegisters[index].Member = value; break;
        case Kind::Memory: machine.Memory[index] = m8085::Low(value); break;
        case Kind::Port: machine.Ports[index] = m8085::Low(value); break;
    }
}

std::string Place::Format(int value) const {
    if (What == Kind::Flag) return m8085::FormatBool(value != 0);
    return Largest() > 0xFF ? m8085::FormatHexLong(value) : m8085::FormatHexByte(m8085::Low(value));
}

std::string Place::Name() const {
    if (!IsMany()) return std::string(Label);
    return What == Kind::Port ? "port " + m8085::FormatHexByte(m8085::Low(First)) : m8085::FormatHexLong(First);
}

Place ReadPlace(std::string_view text) {
    text = Trimmed(text);
    const std::string upper = m8085::UpperCase(text);
    if (const auto place = Named(upper)) return *place;
    if (!upper.starts_with(portWord)) return ReadNumbered(Place::Kind::Memory, text, text);
    return ReadNumbered(Place::Kind::Port, text, Trimmed(text.substr(portWord.size())));
}

bool LooksLikeRange(std::string_view text) {
    const std::size_t sign = text.find('-');
    return sign != text.npos && ReadNumber(Trimmed(text.substr(0, sign)), m8085::MemorySize) &&
           ReadNumber(Trimmed(text.substr(sign + 1)), m8085::MemorySize);
}

std::optional<std::string> RangeMeantBy(std::string_view text) {
    constexpr std::string_view signs = ":.,-/+";
    const std::size_t sign = text.find_first_of(signs);
    if (sign == text.npos) return std::nullopt;
    const std::size_t end = std::min(text.find_first_not_of(signs, sign), text.size());
    std::string range = std::string(text.substr(0, sign)) + '-' + std::string(text.substr(end));
    return LooksLikeRange(range) ? std::optional(range) : std::nullopt;
}

std::optional<int> ReadNumber(std::string_view text, int largest) {
    if (text.starts_with("0x") || text.starts_with("0X"))
        text.remove_prefix(2);
    else if (text.ends_with('H') || text.ends_with('h'))
        text.remove_suffix(1);
    return m8085::ReadHexNumber(text, largest);
}

}  // namespace cases
