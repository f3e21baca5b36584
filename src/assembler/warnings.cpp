#include "assembler/warnings.h"

#include <algorithm>
#include <map>
#include <utility>

#include "assembler/assembler.h"
#include "assembler/checked_program.h"
#include "assembler/instruction_table.h"
#include "assembler/line_words.h"
#include "machine/number_format.h"
#include "machine/text.h"

namespace assembler {

namespace {

using Words = std::vector<Text>;

Text Number(int value) {
    return m8085::Wide(std::to_string(value));
}

bool IsLabel(View word) {
    return word.ends_with(u':');
}

// Digits that are ten or more if they are decimal, and something else as they stand.
bool MayBeDecimal(View word) {
    return std::ranges::all_of(word, m8085::IsDecimalDigit) && ReadNumber(word).value_or(0) > 9;
}

class Search {
public:
    Search(const CheckedProgram& program, Numbering numbering) : program_(program), numbering_(numbering) {}

    std::vector<Warning> Run() {
        for (const CheckedLine& line : program_.Lines)
            if (!line.Words.empty() && line.Error.empty()) LookAt(line);
        WarnOfMixedNumbers();
        std::ranges::stable_sort(warnings_, {}, &Warning::Line);
        return std::move(warnings_);
    }

private:
    void LookAt(const CheckedLine& line) {
        const auto preparedLine = static_cast<int>(&line - program_.Lines.data()) + 1;
        line_ = numbering_ == Numbering::OfSource ? line.SourceLine : preparedLine;
        LookAtLabel(line.Words);
        if (!line.Comment.empty()) return LookAtComment(line);
        LookAtInstructions(line.Words);
        LookAtNumbers(line.Words);
    }

    // Of each line of the source once.
    void LookAtComment(const CheckedLine& line) {
        if (std::exchange(lineOfComment_, line.SourceLine) == line.SourceLine) return;
        const Text reason = line.Comment == u";" ? Text(u"the colon in the comment ends it")
                                                 : u"a comment begins with \";\", not with " + Text(line.Comment);
        Warn(reason + u": " + Shortened(line.Words[First(line.Words)]) + u" is part of the program");
    }

    // The line is taken for what its last word in the first place is.
    static std::size_t First(const Words& words) { return (words.size() - 1) / 3 * 3; }

    void LookAtLabel(const Words& words) {
        const Text& label = words[First(words)];
        if (!IsLabel(label)) return;
        const auto [earlier, isNew] = labels_.try_emplace(label, line_);
        if (isNew) return;
        Warn(u"the label " + Shortened(View(label).substr(0, label.size() - 1)) + u" is defined in line " +
             Number(earlier->second) + u" already, and jumps and calls go there");
    }

    void LookAtInstructions(const Words& words) {
        if (const std::size_t first = First(words); first > 0) return WarnOfLost(words[first], words[0]);
        const InstructionRow* row = FindInstruction(words[0]);
        if (row == nullptr) return;  // a label
        for (std::size_t place = 1; place < words.size() && FindCommentMark(words[place]).empty(); ++place) {
            const Text& word = words[place];
            if (!row->Operands[place - 1].empty()) continue;
            if (IsMnemonic(word) || IsLabel(word)) return WarnOfLost(words[0], word);
            if (IsRegister(word) || ReadNumber(word))
                return Warn(words[0] + (place == 1 ? u" takes no operand: " : u" takes one operand: ") +
                            Shortened(word) + u" is lost");
        }
    }

    void WarnOfLost(View word, View lost) {
        if (word == lost) return Warn(u"only the last " + Text(word) + u" counts on this line");
        Warn(u"only " + Shortened(word) + u" counts on this line: " + Shortened(lost) + u" is lost");
    }

    void LookAtNumbers(const Words& words) {
        const InstructionRow* row = FindInstruction(words[0]);
        if (row == nullptr || row->TakesLabel() || words.size() > 3) return;
        for (std::size_t place = 1; place < words.size(); ++place) {
            const std::string_view takes = row->Operands[place - 1];
            const Text& word = words[place];
            if ((takes != "I8" && takes != "I16") || !ReadNumber(word)) continue;
            // Four digits are an address, and addresses are hexadecimal in all programs.
            const bool isAddress = takes == "I16" && word.size() >= 4;
            if (word.ends_with(u'H') && withFinalH_.Line == 0) withFinalH_ = {line_, word};
            if (!isAddress && MayBeDecimal(word) && bare_.Line == 0) bare_ = {line_, word};
            LookAtName(word, takes == "I8");
        }
    }

    // Two letters may well be a byte.
    void LookAtName(const Text& word, bool isByte) {
        const bool isLabel = m8085::IsLetter(word[0]) && m8085::Contains(program_.Labels, word);
        if (!isLabel && (!IsRegister(word) || (isByte && word.size() > 1))) return;
        const std::int32_t number = *ReadNumber(word);
        const std::string digits =
            isByte ? m8085::FormatHexByte(static_cast<std::uint8_t>(number)) : m8085::FormatHexLong(number);
        Warn(Shortened(word) + u" is the number " + m8085::Wide(digits) + u" here, not the " +
             (isLabel ? u"label" : u"register"));
    }

    void WarnOfMixedNumbers() {
        if (withFinalH_.Line == 0 || bare_.Line == 0) return;
        warnings_.push_back({bare_.Line, Shortened(bare_.Text) + u" is hexadecimal too, though line " +
                                             Number(withFinalH_.Line) + u" has " + Shortened(withFinalH_.Text)});
    }

    void Warn(Text text) { warnings_.push_back({line_, std::move(text)}); }

    const CheckedProgram& program_;
    const Numbering numbering_;
    std::vector<Warning> warnings_;
    int line_ = 0;
    int lineOfComment_ = 0;       // of the source, that was warned of last
    std::map<Text, int> labels_;  // with their colons, and the lines of their first definitions
    Warning withFinalH_;          // the first number of each kind
    Warning bare_;
};

}  // namespace

std::vector<Warning> FindWarnings(const PreparedProgram& program, Numbering numbering) {
    const CheckedProgram checked = CheckProgram(program);
    return Search(checked, numbering).Run();
}

}  // namespace assembler
