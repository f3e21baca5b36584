#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace assembler {

// The texts of programs.
using Text = std::u16string;
using View = std::u16string_view;

// The words of one line of a prepared program as the assembler divides it, without its comment and in upper case. Words
// fill the places of mnemonic, first operand and second operand in turn, so that the fourth comes to the first again.
// Only before and after a second operand does a comma separate; everywhere else it is a character of its word,
// and so is a ";" that sticks to a word, with the rest of the line. The line must hold no line feed.
std::vector<std::u16string> WordsOfLine(std::u16string_view line);

// The same with the places where the words begin, counted from 0.
struct PlacedWord {
    std::size_t Start = 0;
    std::u16string Text;
};
std::vector<PlacedWord> PlacedWordsOfLine(std::u16string_view line);

// A word as messages show it: cut off after thirty characters.
std::u16string Shortened(std::u16string_view word);

}  // namespace assembler
