#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace editor {

enum class Encoding { Utf8, Windows1252 };

struct ProgramFile {
    std::u16string Text;               // as PlainSource leaves it
    Encoding ReadAs = Encoding::Utf8;  // and to be written in
    std::string Problem;               // why it is not a text, in words; empty where it is one
};

// In bytes. A larger file is far from being a program that can be assembled.
inline constexpr std::size_t LargestProgramFile = std::size_t{1024} * 1024;

// In characters. No program that can be assembled is longer as a whole, and in a line much longer than this a key would
// take longer than the next one waits.
inline constexpr std::size_t LongestLine = 32'767;

// Reads UTF-16 that begins with its byte order mark, which is written as UTF-8; what is valid UTF-8 as UTF-8; anything
// else as Windows-1252. The mark goes, and so does 1A (hexadecimal) at the end, which old systems filled their files
// with. Line ends stay as they are. What has control characters other than those of a text, or begins as rich text
// does, is not a text.
ProgramFile DecodeProgramFile(std::string_view bytes);

// Why the editor would not open a file with this text, in words; empty where it would. It is not a text, has too long a
// line, or is too large once it is saved. CR LF, LF and CR end a line, and are saved as CR LF.
std::string FindProblem(std::u16string_view text);

// How many characters, whichever they are, may be added to this text before the file of it is too large. Negative if it
// is already.
std::ptrdiff_t RoomIn(std::u16string_view text);

struct EncodedProgram {
    std::string Bytes;
    Encoding WrittenAs = Encoding::Utf8;
};

// The bytes of a text in the encoding given, or in UTF-8 if that lacks a character or if the bytes would be read as
// another text. Half a surrogate pair becomes the replacement character; any other text reads back as it was.
EncodedProgram EncodeProgramFile(std::u16string_view text, Encoding encoding);

}  // namespace editor
