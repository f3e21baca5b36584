#include "console/text.h"

#include <algorithm>

#include "editor/program_file.h"

namespace console {

std::string Utf8(std::u16string_view text) {
    return editor::EncodeProgramFile(text, editor::Encoding::Utf8).Bytes;
}

std::string Printable(std::string text) {
    std::ranges::replace_if(
        text,
        [](char character) {
            const auto byte = static_cast<unsigned char>(character);
            return (byte < 0x20 && character != '\t') || byte == 0x7F;
        },
        '?');
    return text;
}

}  // namespace console
