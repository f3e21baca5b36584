#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace panels {

inline constexpr int Backspace = 8;

// Whether a typed character may enter a register box: hexadecimal digits in either case, and Backspace.
bool ValidateInput(int KeyCode);

// The byte that a box's text means: its first two characters as a hexadecimal number, 0 for an empty box. Nothing if
// they are not hexadecimal digits; the byte then stays.
std::optional<std::uint8_t> ReadByteText(std::u16string_view text);

}  // namespace panels
