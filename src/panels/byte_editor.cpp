#include "panels/byte_editor.h"

#include "machine/number_format.h"
#include "panels/register_edit.h"

namespace panels {

namespace {

constexpr std::size_t mostDigits = 2;

std::u16string FirstDigits(std::u16string_view text, std::size_t atMost) {
    std::u16string digits;
    for (const char16_t character : text)
        if (digits.size() < atMost && m8085::HexDigitValue(character) >= 0) digits += character;
    return digits;
}

}  // namespace

bool AcceptsEditorKey(int KeyAscii, int textLength, int selectionLength) {
    const bool isFull = textLength - selectionLength >= static_cast<int>(mostDigits);
    return ValidateInput(KeyAscii) && (!isFull || KeyAscii == Backspace);
}

std::u16string CutInsertedText(std::u16string_view text, int caret) {
    const auto place = static_cast<std::size_t>(caret);
    const std::u16string behind = FirstDigits(text.substr(place), mostDigits);
    return FirstDigits(text.substr(0, place), mostDigits - behind.size()) + behind;
}

std::optional<std::uint8_t> ReadEditorText(std::u16string_view text) {
    return text.empty() ? std::nullopt : ReadRegisterText(text);
}

}  // namespace panels
