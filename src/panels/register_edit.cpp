#include "panels/register_edit.h"

#include "machine/number_format.h"

namespace panels {

bool ValidateInput(int KeyCode) {
    return KeyCode == Backspace || m8085::HexDigitValue(static_cast<char32_t>(KeyCode)) >= 0;
}

std::optional<std::uint8_t> ReadByteText(std::u16string_view text) {
    int value = 0;
    for (const char16_t character : text.substr(0, 2)) {
        const int digit = m8085::HexDigitValue(character);
        if (digit < 0) return std::nullopt;
        value = value * 16 + digit;
    }
    return static_cast<std::uint8_t>(value);
}

}  // namespace panels
