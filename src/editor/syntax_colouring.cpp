#include "editor/syntax_colouring.h"

#include <algorithm>

#include "assembler/mnemonic_list.h"
#include "machine/text.h"

namespace editor {

namespace {

bool IsMnemonic(std::u16string_view word) {
    constexpr std::size_t longestMnemonic = 4;
    const auto isBefore = [](const auto& one, const auto& other) {
        return std::ranges::lexicographical_compare(one, other);
    };
    return word.size() <= longestMnemonic &&
           std::ranges::binary_search(assembler::Mnemonics, m8085::UpperCase(word), isBefore);
}

// Letters, digits and the underscore. Beyond ASCII everything counts as a letter but the ranges of signs, spaces and
// punctuation that people type or paste.
bool IsWordCharacter(char16_t character) {
    if (character < 0x80) return m8085::IsDecimalDigit(character) || m8085::IsLetter(character) || character == u'_';
    const bool latinSign = character <= 0xBF && character != 0xAA && character != 0xB5 && character != 0xBA;
    const bool timesOrDivide = character == 0xD7 || character == 0xF7;
    const bool generalSign = character >= 0x2000 && character <= 0x2BFF;
    const bool wideSign = character >= 0x3000 && character <= 0x303F;
    const bool pictureHalf = character >= 0xD800 && character <= 0xDFFF;
    return !latinSign && !timesOrDivide && !generalSign && !wideSign && !pictureHalf;
}

void ColourWords(std::u16string_view line, std::size_t start, std::size_t end, std::vector<ColouredSpan>& spans) {
    while (start < end) {
        std::size_t wordEnd = start;
        while (wordEnd < end && IsWordCharacter(line[wordEnd])) ++wordEnd;
        if (IsMnemonic(line.substr(start, wordEnd - start))) spans.push_back({start, wordEnd - start, true, false});
        start = wordEnd + 1;
    }
}

// A comment's spans lie end to end: its mnemonics and what stands between them.
void ColourComment(std::u16string_view line, std::size_t start, std::vector<ColouredSpan>& spans) {
    std::vector<ColouredSpan> words;
    ColourWords(line, start, line.size(), words);
    for (const ColouredSpan& word : words) {
        if (word.Start > start) spans.push_back({start, word.Start - start, false, true});
        spans.push_back({word.Start, word.Length, true, true});
        start = word.Start + word.Length;
    }
    if (line.size() > start) spans.push_back({start, line.size() - start, false, true});
}

}  // namespace

std::vector<ColouredSpan> ApplyColorCode(std::u16string_view line) {
    std::vector<ColouredSpan> spans;
    const std::size_t comment = std::min(line.find(u';'), line.size());
    ColourWords(line, 0, comment, spans);
    ColourComment(line, comment, spans);
    return spans;
}

}  // namespace editor
