#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace conversion {

// A line of a program, divided.
struct SourceLine {
    std::u16string Code;                  // as it stands, with the blanks around it
    std::u16string Comment;               // with its ";", or empty
    std::u16string End;                   // CR LF, LF, CR, or nothing after the last line
    std::vector<std::u16string> Changes;  // what was done to its comment, each a sentence without capital and full stop
};

// Divides a program into its lines, with the comments in the form that the assembler takes: after a ";" with a blank
// before it, and without a colon that would break the line. "//" and "/* */" become such comments, after the code that
// follows a "*/" on its line; a "/*" that nothing ends is none. A ";" in quotes begins no comment.
std::vector<SourceLine> DivideLines(std::u16string_view source);

// A comment with dashes for the colons that would break its line: those with a word after them.
std::u16string WithoutColons(std::u16string_view comment);

}  // namespace conversion
