#include "console/text.h"

#include "editor/program_file.h"

namespace console {

std::string Utf8(std::u16string_view text) {
    return editor::EncodeProgramFile(text, editor::Encoding::Utf8).Bytes;
}

// The characters from U+0080 to U+009F are control characters as well; in UTF-8 they are C2 and the byte 80 to 9F.
std::string Printable(std::string_view text) {
    std::string printable;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : '\0');
        const bool isPair = byte == 0xC2 && next >= 0x80 && next < 0xA0;
        printable += isPair || byte == 0x7F || (byte < 0x20 && byte != '\t') ? '?' : text[i];
        if (isPair) ++i;
    }
    return printable;
}

}  // namespace console
