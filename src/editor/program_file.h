#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace editor {

enum class Encoding { Utf8, Windows1252 };

struct ProgramFile {
    std::u16string Text;
    Encoding ReadAs = Encoding::Utf8;
};

// In bytes. A larger file is far from being a program that can be assembled.
inline constexpr std::size_t LargestProgramFile = std::size_t{1024} * 1024;

// Every file can be read: what is valid UTF-8 as UTF-8, without its byte order mark, anything else as Windows-1252.
// Line ends stay as they are.
ProgramFile DecodeProgramFile(std::string_view bytes);

// In characters. No program that can be assembled is longer as a whole, and in a line much longer than this a key would
// take longer than the next one waits.
inline constexpr std::size_t LongestLine = 32'767;

// Whether no line is longer than that. CR and LF end a line.
bool LinesAreShortEnough(std::u16string_view text);

struct EncodedProgram {
    std::string Bytes;
    Encoding WrittenAs = Encoding::Utf8;
};

// The bytes of a text in the encoding given, or in UTF-8 if that lacks a character or if the bytes would be read as
// another text. Half a surrogate pair becomes the replacement character; any other text reads back as it was.
EncodedProgram EncodeProgramFile(std::u16string_view text, Encoding encoding);

}  // namespace editor
