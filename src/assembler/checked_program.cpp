#include "assembler/checked_program.h"

#include <algorithm>
#include <map>
#include <memory>
#include <utility>

#include "assembler/assembler.h"
#include "assembler/instruction_table.h"
#include "assembler/line_words.h"

namespace assembler {

namespace {

using Text = std::u16string;
using View = std::u16string_view;

View WithoutComment(View word) {
    return word.substr(0, word.find(u';'));
}

class Check {
public:
    explicit Check(const PreparedProgram& program) : program_(program) {}

    CheckedProgram Run() {
        if (program_.Text.size() > LongestPreparedText) return {};
        for (const View line : LinesOf(program_.Text)) Add(line);
        LookForLastLabel();
        for (const auto& [line, label] : references_)
            if (CanBeFound(label)) result_.Lines[line].Error.clear();
        return std::move(result_);
    }

private:
    void Add(View text) {
        const int number = program_.SourceLine(static_cast<int>(result_.Lines.size()) + 1);
        const bool goesOn = !result_.Lines.empty() && result_.Lines.back().SourceLine == number;
        isInComment_ = isInComment_ && goesOn;
        const Assembly alone = AssembleProgram(Text(text) + u'\n', *machine_, *codeMap_);
        CheckedLine& line =
            result_.Lines.emplace_back(CheckedLine{number, WordsOfLine(text), isInComment_, alone.AsmErrorText});
        isInComment_ = isInComment_ || text.find(u';') != View::npos;
        if (alone.Labels.LabelCount() > 0)
            AddEntry(line, alone.Labels[0]);
        else if (!alone.Succeeded && !line.IsInComment)
            AddMeantLabels(line.Words);
        NoteTarget(line.Words);
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

    void NoteTarget(const std::vector<Text>& words) {
        if (words.size() < 2) return;
        const InstructionRow* row = FindInstruction(words[0]);
        if (row != nullptr && row->TakesLabel()) result_.Targets.emplace(WithoutComment(words[1]));
    }

    // A label without its colon comes first on its line, one with its colon anywhere.
    void AddMeantLabels(const std::vector<Text>& words) {
        if (FindInstruction(words[0]) != nullptr) return;
        meant_.emplace(WithoutComment(words[0]));
        for (const View word : words)
            if (word.ends_with(u':')) meant_.emplace(word.substr(0, word.size() - 1));
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
    bool isInComment_ = false;
    int entries_ = 0;                                       // labels, jumps and calls
    std::map<Text, int> slots_;                             // of each label, that of its first definition
    std::set<Text> meant_;                                  // labels, by faulty lines
    std::vector<std::pair<std::size_t, Text>> references_;  // lines, and the labels that they go to
};

}  // namespace

CheckedProgram CheckProgram(const PreparedProgram& program) {
    return Check(program).Run();
}

}  // namespace assembler
