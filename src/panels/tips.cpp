#include "panels/tips.h"

#include <algorithm>
#include <bitset>
#include <cstring>
#include <span>
#include <utility>
#include <vector>

#include "machine/bytes.h"
#include "machine/number_format.h"
#include "machine/text.h"

namespace panels {

namespace {

using m8085::Changes;
using m8085::FormatBool;
using m8085::FormatHexByte;
using m8085::FormatHexLong;

// Two groups of four digits.
std::string Binary(std::uint8_t value) {
    const std::string digits = std::bitset<8>(value).to_string();
    return digits.substr(0, 4) + ' ' + digits.substr(4);
}

// Nothing for what cannot be seen.
std::string Character(std::uint8_t byte) {
    return byte > ' ' && byte < 0x7F ? std::string(", character ") + static_cast<char>(byte) : std::string();
}

void Append(std::string& list, const std::string& item) {
    list += (list.empty() ? "Changed: " : ", ") + item;
}

void AppendRegisters(std::string& list, const Changes& changes) {
    const auto append = [&](const auto& all, const char* kind, auto&& format) {
        for (const auto& [name, member] : all)
            if (changes.Of(member)) Append(list, kind + std::string(name) + ' ' + format(changes.After.*member));
    };
    append(m8085::ByteRegisters, "", FormatHexByte);
    append(m8085::Flags, "flag ", FormatBool);
    append(m8085::AddressRegisters, "", FormatHexLong);
}

// Takes the marks and the bytes of memory or of the ports. This runs at every step of a Slow Run, and no search through
// 64 KB is faster than the library's for bytes.
template <class Format>
void AppendBytes(std::string& list, const std::string& name, std::span<const bool> marks, const std::uint8_t* bytes,
                 Format format) {
    constexpr int most = 8;
    int listed = 0;
    const bool* mark = marks.data();
    const bool* const end = mark + marks.size();
    while ((mark = static_cast<const bool*>(std::memchr(mark, true, static_cast<std::size_t>(end - mark)))) !=
           nullptr) {
        const std::ptrdiff_t address = mark - marks.data();
        if (listed++ == most) {
            Append(list, std::to_string(std::count(mark, end, true)) + " more bytes of " + name);
            return;
        }
        Append(list, name + ' ' + format(address) + ' ' + FormatHexByte(bytes[address]));
        ++mark;
    }
}

// Without trailing zeros.
std::string Microseconds(std::int64_t nanoseconds) {
    std::string fraction = std::to_string(1000 + nanoseconds % 1000);
    fraction[0] = '.';
    fraction.resize(fraction.find_last_not_of('0') + 1);
    if (fraction == ".") fraction.clear();
    return std::to_string(nanoseconds / 1000) + fraction;
}

}  // namespace

std::string ByteTip(std::uint8_t value) {
    std::string tip = "Binary " + Binary(value) + ", decimal " + std::to_string(value);
    if (value > 127) tip += ", signed " + std::to_string(value - 256);
    return tip;
}

std::string NumberTip(std::int32_t number, int bits) {
    const std::uint8_t low = m8085::Low(number);
    if (bits == 8) return ByteTip(low) + Character(low);
    return "Binary " + Binary(m8085::High(number)) + ' ' + Binary(low) + ", decimal " + std::to_string(number);
}

std::string AddressTip(std::int32_t address) {
    return "Decimal " + std::to_string(address);
}

std::string StackTip(const m8085::MachineState& machine) {
    constexpr int most = 4;
    std::string tip;
    for (std::int32_t address = machine.SP; address < machine.SP + 2 * most && address + 1 < m8085::MemorySize;
         address += 2) {
        const auto low = static_cast<std::size_t>(address);
        tip += "\nWord " + FormatHexLong(machine.Memory[low + 1] << 8 | machine.Memory[low]) + " at " +
               FormatHexLong(address);
    }
    return tip;
}

std::string PointersTip(const m8085::MachineState& machine, std::int32_t address) {
    const std::pair<const char*, std::int32_t> pointers[] = {{"PC", machine.PC},
                                                             {"SP", machine.SP},
                                                             {"HL", machine.H << 8 | machine.L},
                                                             {"BC", machine.B << 8 | machine.C},
                                                             {"DE", machine.D << 8 | machine.E}};
    std::vector<std::string> names;
    for (const auto& [name, value] : pointers)
        if (value == address) names.emplace_back(name);
    if (names.empty()) return {};
    return m8085::Joined(names, ", ", " and ") + (names.size() == 1 ? " points here" : " point here");
}

std::string TimeTip(std::int32_t tStates) {
    return Microseconds(std::int64_t{tStates} * m8085::NanosecondsPerTState) + " microseconds, at " +
           Microseconds(m8085::NanosecondsPerTState) + " each";
}

std::string StoredByteTip(std::uint8_t byte) {
    return "Byte " + FormatHexByte(byte) + ", binary " + Binary(byte) + ", decimal " + std::to_string(byte) +
           Character(byte);
}

std::string DescribeChanges(const Changes& changes, const m8085::MachineState& machine) {
    std::string list;
    AppendRegisters(list, changes);
    AppendBytes(list, "memory", changes.Memory, machine.Memory.data(),
                [](std::ptrdiff_t address) { return FormatHexLong(static_cast<std::int32_t>(address)); });
    AppendBytes(list, "port", changes.Ports, machine.Ports.data(),
                [](std::ptrdiff_t address) { return FormatHexByte(static_cast<std::uint8_t>(address)); });
    return list;
}

}  // namespace panels
