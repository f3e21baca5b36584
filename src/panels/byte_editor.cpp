#include "panels/byte_editor.h"

#include <algorithm>

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

std::optional<std::u16string> CutInsertedText(std::u16string_view before, std::u16string_view text, int caret) {
    const std::u16string_view front = text.substr(0, static_cast<std::size_t>(caret));
    const auto inserted = std::ranges::mismatch(front, before).in1;
    const bool isAllForeign =
        std::none_of(inserted, front.end(), [](char16_t c) { return m8085::HexDigitValue(c) >= 0; });
    if (inserted != front.end() && isAllForeign) return std::nullopt;
    const std::u16string behind = FirstDigits(text.substr(front.size()), mostDigits);
    return FirstDigits(front, mostDigits - behind.size()) + behind;
}

}  // namespace panels
