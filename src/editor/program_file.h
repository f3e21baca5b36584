#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace editor {

enum class Encoding { Utf8, Windows1252 };

struct ProgramFile {
    std::u16string Text;
    Encoding ReadAs = Encoding::Utf8;  // and to be written in
    std::string Problem;               // why it is not the file of a program, in words; empty where it is
};

// In bytes. A larger file is far from being a program that can be assembled.
inline constexpr std::size_t LargestProgramFile = std::size_t{1024} * 1024;

// Reads UTF-16 that begins with its byte order mark, which is written as UTF-8; what is valid UTF-8 as UTF-8; anything
// else as Windows-1252. Without the mark and a final 1A (hexadecimal), by which old systems ended a text. Line ends
// stay as they are. What has other control characters than those of a text, or begins as rich text does, is refused.
ProgramFile DecodeProgramFile(std::string_view bytes);

// In characters. No program that can be assembled is longer as a whole, and in a line much longer than this a key would
// take longer than the next one waits.
inline constexpr std::size_t LongestLine = 32'767;

// Whether no line is longer than that. CR and LF end a line.
bool LinesAreShortEnough(std::u16string_view text);

// Why a text of an editor, written in this encoding, could not be opened again, in words; nothing where it could.
std::optional<std::string> FindExcess(std::u16string_view text, Encoding encoding);

struct EncodedProgram {
    std::string Bytes;
    Encoding WrittenAs = Encoding::Utf8;
};

// The bytes of a text in the encoding given, or in UTF-8 if that lacks a character or if the bytes would be read as
// another text. Half a surrogate pair becomes the replacement character; any other text reads back as it was.
EncodedProgram EncodeProgramFile(std::u16string_view text, Encoding encoding);

}  // namespace editor
