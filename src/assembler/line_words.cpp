#include "assembler/line_words.h"

#include <utility>

#include "machine/text.h"

namespace assembler {

std::vector<PlacedWord> PlacedWordsOfLine(std::u16string_view line) {
    enum Place { Mnemonic, FirstOperand, SecondOperand, Places };
    std::vector<PlacedWord> words;
    words.reserve(Places);
    bool isInWord = false;
    for (std::size_t at = 0; at < line.size(); ++at) {
        if (line[at] == u';') {
            if (isInWord) words.back().Text += m8085::UpperCase(line.substr(at));
            break;
        }
        const std::size_t place = (isInWord ? words.size() - 1 : words.size()) % Places;
        const bool separates = line[at] == u',' && place == (isInWord ? FirstOperand : SecondOperand);
        if (separates || m8085::IsBlank(line[at])) {
            isInWord = false;
            continue;
        }
        if (!isInWord) words.push_back({at, {}});
        isInWord = true;
        words.back().Text += m8085::ToUpperCase(line[at]);
    }
    return words;
}

std::vector<std::u16string> WordsOfLine(std::u16string_view line) {
    std::vector<std::u16string> words;
    for (PlacedWord& word : PlacedWordsOfLine(line)) words.push_back(std::move(word.Text));
    return words;
}

std::u16string Shortened(std::u16string_view word) {
    constexpr std::size_t longest = 30;
    return std::u16string(word.substr(0, longest)) + (word.size() > longest ? u"..." : u"");
}

}  // namespace assembler
