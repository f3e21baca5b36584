#include "conversion/program_lines.h"

#include <algorithm>
#include <set>
#include <utility>

#include "conversion/expression.h"
#include "machine/text.h"

namespace conversion {

namespace {

using Names = std::set<Text>;

// Those that jumps and calls go to. What follows END is not part of the program; where a jump before it goes there, END
// is a label.
Names CutAtEnd(std::vector<Line>& lines) {
    Names targets;
    bool hasEnded = false;
    for (Line& line : lines) {
        if (hasEnded) {
            line.Parsed = {};
            if (m8085::Trimmed(line.Source.Code).empty()) continue;
            line.MakeComment();
            line.Say(u"what follows END is a comment now");
            continue;
        }
        targets.insert(line.Parsed.Target());
        hasEnded = line.Parsed.What == Kind::End && !(line.Parsed.IsAlone() && targets.contains(u"END"));
    }
    return targets;
}

bool IsProseLine(const Line& line, const Names& targets) {
    const Statement& statement = line.Parsed;
    if (statement.What != Kind::Unknown && statement.What != Kind::Instruction) return false;
    if (statement.IsAlone() && targets.contains(statement.Operation)) return false;
    const auto isTarget = [&](const Label& label) { return targets.contains(label.Name); };
    return std::ranges::none_of(statement.Labels, isTarget) && IsProse(statement, line.Source.Code);
}

// "----" and the like.
bool IsRule(View code) {
    code = m8085::Trimmed(code);
    return !code.empty() && code.find_first_not_of(u"-=*#_~`+|/\\ ") == View::npos;
}

void TakeAwayProse(std::vector<Line>& lines, const Names& targets) {
    const auto isInstruction = [](const Line& line) {
        return line.Parsed.IsWholeInstruction() || line.Parsed.What == Kind::Interrupt;
    };
    const auto first = std::ranges::find_if(lines, isInstruction);
    const auto afterLast = std::find_if(lines.rbegin(), lines.rend(), isInstruction).base();
    for (auto line = lines.begin(); line != lines.end(); ++line) {
        const bool isProse = (line < first || line >= afterLast) && IsProseLine(*line, targets);
        if (!isProse && !IsRule(line->Source.Code)) continue;
        line->Parsed = {};
        line->MakeComment();
        line->Say(u"the text is a comment now");
    }
}

void CloseLabels(std::vector<Line>& lines, const Names& targets) {
    Names labels;
    for (const Line& line : lines)
        for (const Label& label : line.Parsed.Labels)
            if (!line.Parsed.DefinesNames()) labels.insert(label.Name);
    for (Line& line : lines) {
        Statement& statement = line.Parsed;
        if (statement.What != Kind::Unknown && statement.What != Kind::End) continue;
        if (!statement.IsAlone() || !IsName(statement.Operation) || !targets.contains(statement.Operation)) continue;
        if (!labels.insert(statement.Operation).second) continue;
        statement.Labels.push_back({statement.Operation, statement.At, {}});
        statement.What = Kind::Nothing;
    }
}

// Address and bytes in front of an instruction go into its comment.
void MoveListing(Line& line) {
    Text& code = line.Source.Code;
    const auto after = FindAfterListing(code);
    if (!after) return;
    Text listing(m8085::Trimmed(View(code).substr(0, *after)));
    std::erase(listing, u':');
    code.erase(0, *after);
    if (!m8085::IsBlank(code.back())) code += u' ';
    line.Source.Comment = u"; " + listing + (line.Source.Comment.empty() ? u"" : u" ") + line.Source.Comment;
    line.Say(listing + u" stands in the comment now");
}

std::optional<std::int32_t> FindListing(View comment, const Statement& statement) {
    while (!comment.empty()) {
        comment.remove_prefix(1);
        const View part = comment.substr(0, comment.find(u';'));
        if (const auto address = ReadListing(part, statement)) return address;
        comment.remove_prefix(part.size());
    }
    return {};
}

}  // namespace

void Line::MakeComment(std::size_t from) {
    Text& code = Source.Code;
    const bool needsBlank = from > 0 && !m8085::IsBlank(code[from - 1]);
    code.replace(from, Text::npos, (needsBlank ? u" ; " : u"; ") + WithoutColons(View(code).substr(from)));
}

void Line::MakeComment() {
    MakeComment(std::min(Source.Code.find_first_not_of(u" \t"), Source.Code.size()));
}

bool Line::IsFaulty() const {
    return std::ranges::count(Notes, true, &Note::IsFault) > 0;
}

std::u16string Line::Converted() const {
    std::vector<Edit> edits = edits_;
    std::ranges::stable_sort(edits, {}, [](const Edit& edit) { return std::pair(edit.At, edit.Length); });
    Text code = Source.Code;
    for (auto edit = edits.rbegin(); edit != edits.rend(); ++edit) code.replace(edit->At, edit->Length, edit->By);
    return code + Source.Comment + Source.End;
}

std::vector<Line> ReadProgram(View source) {
    std::vector<Line> lines;
    std::optional<std::int32_t> instruction;  // whose other bytes may follow, its address
    for (SourceLine& divided : DivideLines(source)) {
        Line line;
        line.Number = static_cast<int>(lines.size()) + 1;
        line.Source = std::move(divided);
        for (const Text& change : line.Source.Changes) line.Say(change);
        MoveListing(line);
        const auto bytes = ReadListing(line.Source.Code);
        if (bytes && instruction && bytes->Address > *instruction && bytes->Address < *instruction + 3) {
            line.MakeComment();
            line.Say(u"the bytes are a comment now");
        } else {
            instruction = {};
        }
        line.Parsed = ReadStatement(line.Source.Code);
        line.Parsed.Address = FindListing(line.Source.Comment, line.Parsed);
        if (line.Parsed.Address) instruction = line.Parsed.Address;
        lines.push_back(std::move(line));
    }
    const Names targets = CutAtEnd(lines);
    TakeAwayProse(lines, targets);
    CloseLabels(lines, targets);
    return lines;
}

}  // namespace conversion
