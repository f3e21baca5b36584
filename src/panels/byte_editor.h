#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace panels {

// The rules of the text box in which a byte of the grid is edited. It never holds more than two hexadecimal digits.

// Whether a typed character may enter the box, with so many characters in it and so many of them selected.
bool AcceptsEditorKey(int KeyAscii, int textLength, int selectionLength);

// What remains of a text into which something may have come past the keys, by pasting or dropping: what typing it would
// have left. `before` is what the box held until then; the caret stands right behind what was inserted. Nothing if what
// came in has no digit at all.
std::optional<std::u16string> CutInsertedText(std::u16string_view before, std::u16string_view text, int caret);

}  // namespace panels
