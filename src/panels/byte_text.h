#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace panels {

// The rules of the text boxes in which a byte is typed as a hexadecimal number: those of the registers, and the one of
// the grid.

inline constexpr int Backspace = 8;

// Whether a typed character may enter a box: hexadecimal digits in either case, and Backspace.
bool ValidateInput(int KeyCode);

// The same for the box of the grid, which holds two digits at most, with so many characters in it and so many of them
// selected.
bool AcceptsEditorKey(int KeyAscii, int textLength, int selectionLength);

// The byte that a box's text means: its first two characters as a hexadecimal number, 0 for an empty box. Nothing if
// they are not hexadecimal digits; the byte then stays.
std::optional<std::uint8_t> ReadByteText(std::u16string_view text);

// What remains in the box of the grid of a text into which something may have come by pasting or dropping: what typing
// it would have left. `before` is what the box held until then; the caret stands right after what was inserted. Nothing
// if no digit at all was inserted.
std::optional<std::u16string> CutInsertedText(std::u16string_view before, std::u16string_view text, int caret);

}  // namespace panels
