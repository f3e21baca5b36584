#include "panels/byte_text.h"

#include <algorithm>

#include "machine/bytes.h"
#include "machine/number_format.h"

namespace panels {

namespace {

constexpr std::size_t mostDigits = 2;

bool IsDigit(char16_t character) {
    return m8085::HexDigitValue(character) >= 0;
}

std::u16string FirstDigits(std::u16string_view text, std::size_t atMost) {
    std::u16string digits;
    for (const char16_t character : text)
        if (digits.size() < atMost && IsDigit(character)) digits += character;
    return digits;
}

}  // namespace

bool ValidateInput(int KeyCode) {
    return KeyCode == Backspace || m8085::HexDigitValue(static_cast<char32_t>(KeyCode)) >= 0;
}

bool AcceptsEditorKey(int KeyAscii, int textLength, int selectionLength) {
    const bool isFull = textLength - selectionLength >= static_cast<int>(mostDigits);
    return ValidateInput(KeyAscii) && (!isFull || KeyAscii == Backspace);
}

std::optional<std::uint8_t> ReadByteText(std::u16string_view text) {
    if (text.empty()) return 0;
    const auto value = m8085::ReadHexNumber(text.substr(0, mostDigits), 0xFF);
    return value ? std::optional(m8085::Low(*value)) : std::nullopt;
}

std::optional<std::u16string> CutInsertedText(std::u16string_view before, std::u16string_view text, int caret) {
    const std::u16string_view front = text.substr(0, static_cast<std::size_t>(caret));
    const auto inserted = std::ranges::mismatch(front, before).in1;
    if (inserted != front.end() && std::none_of(inserted, front.end(), IsDigit)) return std::nullopt;
    const std::u16string rest = FirstDigits(text.substr(front.size()), mostDigits);
    return FirstDigits(front, mostDigits - rest.size()) + rest;
}

}  // namespace panels
