#pragma once

#include <string>

namespace platform {

// The clipboard's rich text format, used here for plain text with no markup. Putting a text there also offers it as
// plain text, so that other programs can take it; reading takes the rich text format alone and gives the empty text
// where the clipboard has none.
void PutRichText(std::u16string_view text);
std::u16string ReadRichText();

}  // namespace platform
