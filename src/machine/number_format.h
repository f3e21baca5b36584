#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

namespace m8085 {

// The digits by their values.
inline constexpr std::string_view HexDigits = "0123456789ABCDEF";

// Exactly two upper-case hexadecimal digits.
std::string FormatHexByte(std::uint8_t value);

// Upper-case hexadecimal, padded with zeros to four digits; values above FFFF show all their digits.
std::string FormatHexLong(std::int32_t value);

// Upper-case hexadecimal without leading zeros; 0 shows as "0". Takes 0 and more.
std::string FormatHexShort(std::int32_t value);

// "1" for true, "0" for false.
std::string FormatBool(bool value);

// The value of a text of decimal digits alone, up to 2^64 - 1; nothing for any other text.
std::optional<std::uint64_t> ReadDecimal(std::string_view text);

// The value of a hexadecimal digit in either case, -1 for any other character.
constexpr int HexDigitValue(char32_t character) {
    if (character >= U'0' && character <= U'9') return static_cast<int>(character - U'0');
    if (character >= U'A' && character <= U'F') return static_cast<int>(character - U'A' + 10);
    if (character >= U'a' && character <= U'f') return static_cast<int>(character - U'a' + 10);
    return -1;
}

// The value of a text of digits to a base of 2 to 16 alone, in either case, with any number of leading zeros; nothing
// for any other text. A value above `largest` reads as the one after it. `largest` is below 7FFFFFFFFFFFFFF
// (hexadecimal).
template <class Text>
constexpr std::optional<std::int64_t> ReadDigits(Text text, int base, std::int64_t largest) {
    if (text.empty()) return std::nullopt;
    std::int64_t value = 0;
    for (const auto character : text) {
        const int digit = HexDigitValue(static_cast<std::make_unsigned_t<decltype(+character)>>(character));
        if (digit < 0 || digit >= base) return std::nullopt;
        value = std::min(value * base + digit, largest + 1);
    }
    return value;
}

// The same of hexadecimal digits. `largest` is below 7FFFFFFF (hexadecimal).
template <class Text>
constexpr std::optional<std::int32_t> ReadHexNumber(Text text, std::int32_t largest) {
    const auto value = ReadDigits(text, 16, largest);
    return value ? std::optional(static_cast<std::int32_t>(*value)) : std::nullopt;
}

}  // namespace m8085
