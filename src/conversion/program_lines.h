#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "conversion/conversion.h"
#include "conversion/source_lines.h"
#include "conversion/statement.h"

namespace conversion {

// One line of a program that is being converted.
struct Line {
    SourceLine Source;
    Statement Parsed;         // nothing where the line is not part of the program
    int Number = 0;           // counted from 1
    std::vector<Note> Notes;  // what was said of it

    // Puts a text in the place of a part of the code. Other places stay what they are.
    void Replace(std::size_t at, std::size_t length, std::u16string by) {
        edits_.push_back({at, length, std::move(by)});
    }

    // Makes a comment of the code from there on. Places in front stay what they are.
    void MakeComment(std::size_t from);

    // Makes a comment of all its code.
    void MakeComment();

    void Say(std::u16string text) { Notes.push_back({Number, false, std::move(text)}); }
    void SayFault(std::u16string text) { Notes.push_back({Number, true, std::move(text)}); }
    bool IsFaulty() const;

    // The whole line with its end.
    std::u16string Converted() const;

private:
    struct Edit {
        std::size_t At = 0;
        std::size_t Length = 0;
        std::u16string By;
    };
    std::vector<Edit> edits_;
};

// Divides a program into its lines. What follows END and is English before or after the instructions becomes a comment,
// and a word alone on a line a label if something jumps there.
std::vector<Line> ReadProgram(std::u16string_view source);

}  // namespace conversion
