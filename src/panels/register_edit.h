#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace panels {

inline constexpr int Backspace = 8;

// Whether a typed character may enter a register box: hexadecimal digits in either case, and Backspace.
bool ValidateInput(int KeyCode);

// The text, or "0" if it is empty.
std::u16string SafeString(std::u16string_view str);

// The value that a register box gives its register: its first two characters as a hexadecimal number, 0 for an empty
// box. Nothing if they are not hexadecimal digits; the register then stays.
std::optional<std::uint8_t> ReadRegisterText(std::u16string_view text);

}  // namespace panels
