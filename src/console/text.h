#pragma once

#include <string>
#include <string_view>

namespace console {

// UTF-8, as it is written to files and terminals.
std::string Utf8(std::u16string_view text);

// A name or a line of a file, fit for one line of output: control characters become question marks.
std::string Printable(std::string_view text);

}  // namespace console
