#include "console/places.h"

#include <algorithm>
#include <charconv>
#include <functional>
#include <iterator>

#include "console/text.h"
#include "machine/bytes.h"
#include "machine/number_format.h"

namespace console {

namespace {

constexpr std::string_view pairNames[] = {"BC", "DE", "HL", "SP"};

int IndexOf(const auto& names, std::string_view name, auto nameOf) {
    const auto found = std::ranges::find(names, name, nameOf);
    return found == std::end(names) ? -1 : static_cast<int>(found - std::begin(names));
}

}  // namespace

Setting::Setting(const std::string& text) {
    const std::size_t sign = text.find('=');
    if (sign == std::string::npos) throw UsageError("\"" + text + "\" is not WHERE=VALUE");
    FindPlace(UpperCase(text.substr(0, sign)));
    const int largest = kind_ == Kind::Flag ? 1 : kind_ == Kind::Pair ? 0xFFFF : 0xFF;
    const bool isList = kind_ == Kind::Memory || kind_ == Kind::Port;
    std::string_view rest = std::string_view(text).substr(sign + 1);
    while (true) {
        const std::size_t comma = isList ? std::min(rest.find(','), rest.size()) : rest.size();
        const auto value = m8085::ReadHexNumber(rest.substr(0, comma), largest);
        if (!value || *value > largest)
            throw UsageError("\"" + text + "\": a value is hexadecimal, from 0 to " + m8085::FormatHexShort(largest));
        values_.push_back(*value);
        if (comma == rest.size()) break;
        rest.remove_prefix(comma + 1);
    }
    const std::size_t end = static_cast<std::size_t>(number_) + values_.size();
    if ((kind_ == Kind::Memory && end > m8085::MemorySize) || (kind_ == Kind::Port && end > m8085::PortCount))
        throw UsageError("\"" + text + "\" goes beyond the last " + (kind_ == Kind::Port ? "port" : "address"));
}

void Setting::FindPlace(std::string_view where) {
    constexpr std::string_view port = "PORT ";
    if (const int index = IndexOf(RegisterNames, where, &RegisterName::Name); index >= 0) {
        kind_ = Kind::Register;
        number_ = index;
    } else if (const int pair = IndexOf(pairNames, where, std::identity{}); pair >= 0) {
        kind_ = Kind::Pair;
        number_ = pair;
    } else if (const int flag = IndexOf(Flags, where, &FlagName::Name); flag >= 0) {
        kind_ = Kind::Flag;
        number_ = flag;
    } else {
        kind_ = where.starts_with(port) ? Kind::Port : Kind::Memory;
        const int largest = kind_ == Kind::Port ? m8085::PortCount - 1 : m8085::MemorySize - 1;
        const auto number = m8085::ReadHexNumber(kind_ == Kind::Port ? where.substr(port.size()) : where, largest);
        if (!number || *number > largest)
            throw UsageError("\"" + std::string(where) +
                             "\" is no register (A to L), pair (BC, DE, HL, SP), flag (S, Z, AC, P, CY), address or "
                             "port (\"port 10\")");
        number_ = *number;
    }
}

void Setting::Store(m8085::MachineState& machine) const {
    for (std::size_t index = 0; index < values_.size(); ++index) {
        const std::uint8_t value = m8085::Low(values_[index]);
        const std::size_t place = static_cast<std::size_t>(number_) + index;
        switch (kind_) {
            case Kind::Register: machine.*RegisterNames[place].Register = value; break;
            case Kind::Pair: machine.SetRegPair(m8085::Low(number_), m8085::High(values_[index]), value, false); break;
            case Kind::Flag: machine.*Flags[place].Flag = value != 0; break;
            case Kind::Memory: machine.Memory[place] = value; break;
            case Kind::Port: machine.Ports[place] = value; break;
        }
    }
}

int Setting::ValueAt(const m8085::MachineState& machine, std::size_t index) const {
    const std::size_t place = static_cast<std::size_t>(number_) + index;
    switch (kind_) {
        case Kind::Register: return machine.*RegisterNames[place].Register;
        case Kind::Pair: return machine.GetRegPair(static_cast<std::uint8_t>(number_), false);
        case Kind::Flag: return machine.*Flags[place].Flag ? 1 : 0;
        case Kind::Memory: return machine.Memory[place];
        case Kind::Port: return machine.Ports[place];
    }
    return 0;
}

std::string Setting::Found(const m8085::MachineState& machine) const {
    std::string text;
    for (std::size_t index = 0; index < values_.size(); ++index) {
        const int value = ValueAt(machine, index);
        if (index > 0) text += ',';
        if (kind_ == Kind::Pair)
            text += m8085::FormatHexLong(value);
        else
            text += kind_ == Kind::Flag ? m8085::FormatBool(value != 0)
                                        : m8085::FormatHexByte(static_cast<std::uint8_t>(value));
    }
    return text;
}

bool Setting::Holds(const m8085::MachineState& machine) const {
    for (std::size_t index = 0; index < values_.size(); ++index)
        if (ValueAt(machine, index) != values_[index]) return false;
    return true;
}

Expectation::Expectation(const std::string& text) : text_(text) {
    constexpr std::string_view tStates = "TSTATES<=";
    if (UpperCase(text).starts_with(tStates))
        mostTStates_ = ReadDecimal(std::string_view(text).substr(tStates.size()), "tstates<=");
    else
        setting_.emplace_back(text);
}

std::string Expectation::Found(const m8085::MachineState& machine) const {
    return setting_.empty() ? std::to_string(machine.TStates) : setting_.front().Found(machine);
}

bool Expectation::Holds(const m8085::MachineState& machine) const {
    if (setting_.empty()) return static_cast<std::uint64_t>(machine.TStates) <= mostTStates_;
    return setting_.front().Holds(machine);
}

bool LooksLikeRange(std::string_view text) {
    const std::size_t sign = text.find('-');
    return sign != text.npos && m8085::ReadHexNumber(text.substr(0, sign), 0xFFFF) &&
           m8085::ReadHexNumber(text.substr(sign + 1), 0xFFFF);
}

memedata::AddressRange ReadRange(const std::string& text) {
    const std::string_view view = text;
    const std::size_t sign = std::min(view.find('-'), view.size());
    constexpr std::int32_t last = m8085::MemorySize - 1;
    const auto from = m8085::ReadHexNumber(view.substr(0, sign), last);
    const auto to = m8085::ReadHexNumber(view.substr(std::min(sign + 1, view.size())), last);
    if (!from || !to || *from > *to || *to > last)
        throw UsageError("\"" + text + "\" is no range of addresses such as 9000-90FF");
    return {static_cast<std::uint16_t>(*from), static_cast<std::uint16_t>(*to)};
}

std::uint64_t ReadDecimal(std::string_view digits, const std::string& purpose) {
    std::uint64_t value = 0;
    const char* const end = digits.data() + digits.size();
    const auto [behind, error] = std::from_chars(digits.data(), end, value);
    if (error != std::errc{} || behind != end)
        throw UsageError(purpose + " takes a decimal number, not \"" + std::string(digits) + "\"");
    return value;
}

}  // namespace console
