#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace conversion {

// What was done to a line, or could not be done.
struct Note {
    int Line = 0;          // of the source and of the result alike, counted from 1; 0 for the program as a whole
    bool IsFault = false;  // the line is left as it was, or does not mean what it did
    std::u16string Text;   // a sentence without capital and full stop
};

struct Conversion {
    std::u16string Program;   // with as many lines as the source has, and their line ends
    std::string Data;         // a data file of the bytes that the program defined; empty for none
    std::vector<Note> Notes;  // in the order of the lines
};

// Brings a program that was written for another assembler into this language. Whatever cannot be brought over stays as
// it is, and is named. Without allDecimal a program that assembles without a warning stays as it is whole, and digits
// alone are hexadecimal where there is room for them; with it they are decimal. Another conversion changes nothing
// more.
Conversion ConvertProgram(std::u16string_view source, bool allDecimal = false);

}  // namespace conversion
