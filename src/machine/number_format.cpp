#include "machine/number_format.h"

#include <charconv>
#include <system_error>

namespace m8085 {

namespace {

std::string FormatHex(std::uint32_t value, std::size_t leastDigits) {
    std::string text;
    for (; value != 0 || text.size() < leastDigits; value >>= 4) text.insert(text.begin(), HexDigits[value & 15]);
    return text;
}

}  // namespace

std::string FormatHexByte(std::uint8_t value) {
    return FormatHex(value, 2);
}

std::string FormatHexLong(std::int32_t value) {
    return FormatHex(static_cast<std::uint32_t>(value), 4);
}

std::string FormatHexShort(std::int32_t value) {
    return FormatHex(static_cast<std::uint32_t>(value), 1);
}

std::string FormatBool(bool value) {
    return value ? "1" : "0";
}

std::optional<std::uint64_t> ReadDecimal(std::string_view text) {
    std::uint64_t value = 0;
    const char* const end = text.data() + text.size();
    const auto [after, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && after == end ? std::optional(value) : std::nullopt;
}

}  // namespace m8085
