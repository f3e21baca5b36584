#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace panels {

// The rules of the text box in which a byte of the grid is edited. It never holds more than two hexadecimal digits.

// Whether a typed character may enter the box, with so many characters in it and so many of them selected.
bool AcceptsEditorKey(int KeyAscii, int textLength, int selectionLength);

// What remains of a text into which something came past the keys, by pasting or dropping: what typing it would have
// left. The caret stands right behind what was inserted.
std::u16string CutInsertedText(std::u16string_view text, int caret);

// The byte that the box's text means; nothing for an empty text. Expects at most two hexadecimal digits.
std::optional<std::uint8_t> ReadEditorText(std::u16string_view text);

}  // namespace panels
