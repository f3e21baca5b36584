#include "assembler/source_preparation.h"

#include "assembler/assembler.h"

namespace assembler {

namespace {

constexpr std::u16string_view lineEnd = u"\r\n";

}  // namespace

std::vector<std::size_t> FindLabelSplits(std::u16string_view text) {
    std::vector<std::size_t> splits;
    for (std::size_t colon = text.find(u':'); colon != std::u16string_view::npos;) {
        std::size_t behind = colon + 1;
        while (behind < text.size() && text[behind] == u' ') ++behind;
        if (text.substr(behind, lineEnd.size()) != lineEnd) splits.push_back(behind);
        colon = text.find(u':', behind);
    }
    return splits;
}

std::optional<std::string> ExplainExcessLength(std::size_t length, std::size_t labelSplits) {
    constexpr std::size_t longest = LongestPreparedText - 1;
    const std::size_t splitLength = length + labelSplits * lineEnd.size();
    if (splitLength <= longest) return std::nullopt;
    return "The program is too long to assemble: " +
           std::string(labelSplits > 0 ? "with each label on a line of its own it has " : "it has ") +
           std::to_string(splitLength) + " characters, and at most " + std::to_string(longest) +
           " can be assembled. A line end counts as two.";
}

std::u16string ConvertLineEnds(std::u16string_view text) {
    std::u16string converted(text);
    for (std::size_t at = converted.find(lineEnd); at != std::u16string::npos; at = converted.find(lineEnd, at + 2))
        converted.replace(at, lineEnd.size(), u"\n ");
    converted += u'\n';
    return converted;
}

}  // namespace assembler
