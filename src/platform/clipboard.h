#pragma once

#include <string>

class QMimeData;

namespace platform {

// A text as the clipboard takes it and as it is dragged; its lines end in CR LF. It stands under the rich text format,
// with no markup, and as plain text for other programs. There the lines end in a line feed, for which Qt sets
// the line end of the platform. The caller owns the result.
QMimeData* MakeRichText(std::u16string_view text);

// Puts a text on the clipboard, and reads the clipboard's rich text format alone: the empty text where it has none.
void PutRichText(std::u16string_view text);
std::u16string ReadRichText();

}  // namespace platform
