#pragma once

#include <string>
#include <string_view>

namespace editor {

enum class Encoding { Utf8, Windows1252 };

struct ProgramFile {
    std::u16string Text;
    Encoding ReadAs = Encoding::Utf8;
};

// Every file can be read: what is valid UTF-8 as UTF-8, without its byte order mark, anything else as Windows-1252.
// Line ends stay as they are.
ProgramFile DecodeProgramFile(std::string_view bytes);

struct EncodedProgram {
    std::string Bytes;
    Encoding WrittenAs = Encoding::Utf8;
};

// The bytes of a text in the encoding given, or in UTF-8 if that lacks a character or if the bytes would be read as
// another text. Half a surrogate pair becomes the replacement character; any other text reads back as it was.
EncodedProgram EncodeProgramFile(std::u16string_view text, Encoding encoding);

}  // namespace editor
