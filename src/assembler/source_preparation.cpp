#include "assembler/source_preparation.h"

#include <iterator>

#include "assembler/assembler.h"

namespace assembler {

namespace {

constexpr std::u16string_view lineEnd = u"\r\n";

std::u16string WithCarriageReturns(std::u16string_view source) {
    std::u16string text;
    text.reserve(source.size());
    for (std::size_t i = 0; i < source.size(); ++i) {
        if (source[i] != u'\r' && source[i] != u'\n') {
            text += source[i];
            continue;
        }
        text += lineEnd;
        if (source.substr(i, lineEnd.size()) == lineEnd) ++i;
    }
    return text;
}

}  // namespace

std::vector<std::size_t> FindLabelSplits(std::u16string_view text) {
    std::vector<std::size_t> splits;
    for (std::size_t colon = text.find(u':'); colon != std::u16string_view::npos;) {
        std::size_t after = colon + 1;
        while (after < text.size() && text[after] == u' ') ++after;
        if (text.substr(after, lineEnd.size()) != lineEnd) splits.push_back(after);
        colon = text.find(u':', after);
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

int PreparedProgram::SourceLine(int line) const {
    return line < 1 || line > std::ssize(SourceLines) ? 0 : SourceLines[static_cast<std::size_t>(line - 1)];
}

PreparedProgram PrepareProgram(std::u16string_view source) {
    const std::u16string text = WithCarriageReturns(source);
    std::u16string split;
    PreparedProgram program;
    program.Length = text.size();
    int line = 1;
    std::size_t copied = 0;
    const auto copyTo = [&](std::size_t end) {
        const std::u16string_view part = std::u16string_view(text).substr(copied, end - copied);
        for (std::size_t at = part.find(lineEnd); at != part.npos; at = part.find(lineEnd, at + lineEnd.size()))
            program.SourceLines.push_back(line++);
        split += part;
        copied = end;
    };
    for (const std::size_t place : FindLabelSplits(text)) {
        copyTo(place);
        split += lineEnd;
        program.SourceLines.push_back(line);
        ++program.LabelSplits;
    }
    copyTo(text.size());
    program.SourceLines.push_back(line);
    program.Text = ConvertLineEnds(split);
    return program;
}

}  // namespace assembler
