#pragma once

#include <string>
#include <string_view>

namespace editor {

// A program as it looks. Outside comments, which begin at a line's first ";", characters that look like a blank become
// one, those that cannot be seen are left out, and the separators of lines and paragraphs and U+0085 become line feeds.
// Comments and all else stay as they are. LF and CR end a line.
std::u16string PlainSource(std::u16string_view text);

}  // namespace editor
