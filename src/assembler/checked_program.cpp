#include "assembler/checked_program.h"

#include <algorithm>
#include <map>
#include <memory>
#include <utility>

#include "assembler/assembler.h"
#include "assembler/instruction_table.h"
#include "assembler/line_words.h"
#include "machine/text.h"

namespace assembler {

namespace {

constexpr View blockBegin = u"/*";
constexpr View blockEnd = u"*/";

View WithoutComment(View word) {
    return word.substr(0, word.find(u';'));
}

class Check {
public:
    explicit Check(const PreparedProgram& program) : program_(program) {}

    CheckedProgram Run() {
        if (program_.Text.size() > LongestPreparedText) return {};
        for (const View line : m8085::LinesOf(program_.Text)) Add(line);
        LookForLastLabel();
        for (const auto& [line, label] : references_)
            if (CanBeFound(label)) result_.Lines[line].Error.clear();
        return std::move(result_);
    }

private:
    void Add(View text) {
        const int number = program_.SourceLine(static_cast<int>(result_.Lines.size()) + 1);
        const bool goesOn = !result_.Lines.empty() && result_.Lines.back().SourceLine == number;
        if (!goesOn && !isInBlock_) comment_ = {};
        const Assembly alone = AssembleProgram(Text(text) + u'\n', *machine_, *codeMap_);
        CheckedLine& line =
            result_.Lines.emplace_back(CheckedLine{number, WordsOfLine(text), comment_, alone.AsmErrorText});
        if (alone.Labels.LabelCount() > 0)
            AddEntry(line, alone.Labels[0]);
        else if (!alone.Succeeded && line.Comment.empty())
            AddMeantLabels(line.Words);
        NoteWords(line.Words);
        FollowComment(text);
    }

    // A comment goes on to the end of the line in the source, and one that is closed further down to there.
    void FollowComment(View text) {
        if (comment_.empty()) {
            comment_ = FindCommentMark(text);
            const bool isClosedBelow = lastBlockEnd_ != View::npos && &program_.Text[lastBlockEnd_] > &text.back();
            isInBlock_ = comment_ == blockBegin && isClosedBelow && text.find(blockEnd) == View::npos;
        } else if (text.find(blockEnd) != View::npos) {
            isInBlock_ = false;
        }
    }

    // A jump or call fails as long as it stands alone.
    void AddEntry(CheckedLine& line, const LabelEntry& entry) {
        const bool isFirstWithoutPlace = entries_ == LabelTable::Slots;
        if (isFirstWithoutPlace)
            line.Error = GeneralFailure;
        else if (entry.Kind == LabelKind::Reference)
            references_.emplace_back(result_.Lines.size() - 1, entry.Name);
        if (entry.Kind == LabelKind::Definition && slots_.try_emplace(entry.Name, entries_).second)
            result_.Labels.push_back(entry.Name);
        ++entries_;
    }

    void NoteWords(const std::vector<Text>& words) {
        const InstructionRow* row = words.empty() ? nullptr : FindInstruction(words[0]);
        const bool goesToLabel = row != nullptr && row->TakesLabel() && words.size() > 1;
        if (goesToLabel) result_.Targets.emplace(WithoutComment(words[1]));
        for (std::size_t place = goesToLabel ? 2 : 1; place < words.size(); ++place)
            if (const View word = words[place]; word.ends_with(u':'))
                result_.MisplacedLabels.emplace(word.substr(0, word.size() - 1));
    }

    // A label without its colon comes first on its line, one with its colon anywhere.
    void AddMeantLabels(const std::vector<Text>& words) {
        if (IsMnemonic(words[0])) return;
        meant_.emplace(WithoutComment(words[0]));
        for (const View word : words) {
            if (!FindCommentMark(word).empty()) return;
            if (word.ends_with(u':')) meant_.emplace(word.substr(0, word.size() - 1));
        }
    }

    // A label in the last place of the table is not found there.
    void LookForLastLabel() {
        if (entries_ != LabelTable::Slots) return;
        for (const auto& [label, slot] : slots_)
            if (slot == LabelTable::NotFound) result_.UnreachableLabel = label;
    }

    bool CanBeFound(const Text& label) const {
        return (slots_.contains(label) && label != result_.UnreachableLabel) || meant_.contains(label);
    }

    const PreparedProgram& program_;
    CheckedProgram result_;
    const std::unique_ptr<m8085::MachineState> machine_ = std::make_unique<m8085::MachineState>();
    const std::unique_ptr<m8085::CodeMap> codeMap_ = std::make_unique<m8085::CodeMap>();
    const std::size_t lastBlockEnd_ = program_.Text.rfind(blockEnd);
    View comment_;
    bool isInBlock_ = false;                                // in a comment over more than one line
    int entries_ = 0;                                       // labels, jumps and calls
    std::map<Text, int> slots_;                             // of each label, that of its first definition
    std::set<Text> meant_;                                  // labels, by faulty lines
    std::vector<std::pair<std::size_t, Text>> references_;  // lines, and the labels that they go to
};

}  // namespace

std::u16string_view FindCommentMark(std::u16string_view line) {
    if (line.substr(std::min(line.find_first_not_of(u" \t"), line.size())).starts_with(u'"')) return u"\"";
    for (std::size_t at = 0; at < line.size(); ++at)
        for (const View mark : {View(u";"), View(u"//"), blockBegin})
            if (line.substr(at).starts_with(mark)) return mark;
    return {};
}

CheckedProgram CheckProgram(const PreparedProgram& program) {
    return Check(program).Run();
}

}  // namespace assembler
