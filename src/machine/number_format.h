#pragma once

#include <cstdint>
#include <string>

namespace m8085 {

// Exactly two upper-case hexadecimal digits.
std::string FormatHexByte(std::uint8_t value);

// Upper-case hexadecimal, padded with zeros to four digits; values above FFFF show all their digits.
std::string FormatHexLong(std::int32_t value);

// Upper-case hexadecimal without leading zeros; 0 shows as "0". Takes 0 and more.
std::string FormatHexShort(std::int32_t value);

// "1" for true, "0" for false.
std::string FormatBool(bool value);

// The value of a hexadecimal digit in either case, -1 for any other character.
constexpr int HexDigitValue(char32_t character) {
    if (character >= U'0' && character <= U'9') return static_cast<int>(character - U'0');
    if (character >= U'A' && character <= U'F') return static_cast<int>(character - U'A' + 10);
    if (character >= U'a' && character <= U'f') return static_cast<int>(character - U'a' + 10);
    return -1;
}

}  // namespace m8085
