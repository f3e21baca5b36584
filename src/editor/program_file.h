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

// The bytes of a text in the encoding given, or in UTF-8 if that lacks a character; `encoding` then becomes UTF-8.
// Half a surrogate pair becomes the replacement character.
std::string EncodeProgramFile(std::u16string_view text, Encoding& encoding);

}  // namespace editor
