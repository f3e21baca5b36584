#include "conversion/program_lines.h"

#include <algorithm>
#include <set>
#include <utility>

#include "assembler/disassembly.h"
#include "conversion/expression.h"
#include "machine/number_format.h"
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

// "----", "```asm" and the like.
bool IsRule(View code) {
    code = m8085::Trimmed(code);
    if (code.starts_with(u"```") && IsWord(code.substr(3))) return true;
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

// Puts a part of the code before its comment, as another one.
Text MoveToComment(Line& line, std::size_t at, std::size_t length) {
    Text& code = line.Source.Code;
    Text& comment = line.Source.Comment;
    Text text = WithoutColons(m8085::Trimmed(View(code).substr(at, length)));
    code.erase(at, length);
    if (!code.empty() && !m8085::IsBlank(code.back())) code += u' ';
    comment = u"; " + text + (comment.empty() ? u"" : u" ") + comment;
    return text;
}

// Address and bytes in front of an instruction go into its comment.
void MoveListing(Line& line) {
    Text& code = line.Source.Code;
    const auto after = FindAfterListing(code);
    if (!after) return;
    Text listing = code.substr(0, *after);
    std::erase(listing, u':');
    code.replace(0, *after, listing);
    line.Say(MoveToComment(line, 0, listing.size()) + u" stands in the comment now");
}

// The number of a line, "1", "1." or "1)", up to the code after it.
struct LineNumber {
    std::optional<std::int64_t> Number;
    std::size_t Length = 0;
};

constexpr std::int64_t mostLines = 100'000;

LineNumber ReadLineNumber(View code) {
    const std::size_t at = std::min(code.find_first_not_of(u" \t"), code.size());
    const std::size_t end = std::min(code.find_first_not_of(u"0123456789", at), code.size());
    const auto number = m8085::ReadDigits(code.substr(at, end - at), 10, mostLines);
    const std::size_t after = end < code.size() && View(u".)").find(code[end]) != View::npos ? end + 1 : end;
    if (after < code.size() && !m8085::IsBlank(code[after])) return {};
    return {number, std::min(code.find_first_not_of(u" \t", after), code.size())};
}

// Whether instructions have numbers from 1 upward before them, to which no jump goes.
bool AreNumbered(const std::vector<Line>& lines) {
    std::int64_t next = 1;
    std::set<std::int64_t> targets;
    for (const Line& line : lines) {
        const View code = line.Source.Code;
        const auto [number, length] = ReadLineNumber(code);
        const bool isNumbered = number == next;
        const Statement statement = ReadStatement(isNumbered ? code.substr(length) : code);
        if (isNumbered)
            ++next;
        else if (statement.IsInstruction())
            return false;
        targets.insert(m8085::ReadDigits(View(statement.Target()), 10, mostLines).value_or(mostLines));
    }
    return next > 2 && targets.lower_bound(1) == targets.lower_bound(next);
}

void MoveNumbers(std::vector<Line>& lines) {
    if (!AreNumbered(lines)) return;
    std::int64_t next = 1;
    for (Line& line : lines) {
        const auto [number, length] = ReadLineNumber(line.Source.Code);
        if (number != next) continue;
        line.Say(u"the number " + MoveToComment(line, 0, length) + u" stands in the comment now");
        ++next;
    }
}

std::optional<std::int32_t> FindListing(View comment, const Statement& statement) {
    for (const View part : m8085::PartsOf(comment, u';'))
        if (const auto address = ReadListing(part, statement)) return address;
    return {};
}

// Where "- load it" or "/ load it" begins after an instruction. It is not computed with what follows the sign if that
// is a word, but none of the names.
std::optional<std::size_t> FindRemark(const Statement& statement, View code, const Names& names) {
    if (!statement.IsWholeInstruction()) return {};
    const View own = code.substr(statement.At);
    const auto isSign = [=](std::size_t at) {
        return m8085::IsBlank(code[at - 1]) && View(u"-/*%!|").find(code[at]) != View::npos;
    };
    std::size_t at = (statement.Operands.empty() ? statement.At : statement.Operands.back().At) + 1;
    while (at < code.size() && !isSign(at)) ++at;
    if (at + 1 >= code.size() || !m8085::IsBlank(code[at + 1])) return {};
    const View text = m8085::Trimmed(code.substr(at + 1));
    const View word = text.substr(0, text.find_first_of(u" \t,.;()-"));
    const bool isOther = names.contains(m8085::UpperCase(word)) || IsUnaryOperator(word) || MayBeInstruction(text, own);
    return IsWord(word) && !isOther ? std::optional(at) : std::nullopt;
}

void AddNames(const Statement& statement, Names& names) {
    const bool isWhole = statement.What != Kind::Instruction || statement.IsWholeInstruction();
    if (statement.What != Kind::Unknown && isWhole)
        for (const Label& label : statement.Labels) names.insert(label.Name);
    if (statement.IsAlone()) names.insert(statement.Operation);
}

// Those before END. An earlier conversion has left some in comments.
Names FindNames(const std::vector<Line>& lines) {
    Names names;
    for (const Line& line : lines) {
        if (line.Parsed.What == Kind::End) break;
        AddNames(line.Parsed, names);
        for (const View part : m8085::PartsOf(line.Source.Comment, u';')) AddNames(ReadStatement(part), names);
    }
    return names;
}

void MoveRemarks(std::vector<Line>& lines) {
    const Names names = FindNames(lines);
    for (Line& line : lines) {
        const auto at = FindRemark(line.Parsed, line.Source.Code, names);
        if (!at) continue;
        MoveToComment(line, *at, Text::npos);
        line.Say(u"the text after the instruction is a comment now");
        const auto address = line.Parsed.Address;
        line.Parsed = ReadStatement(line.Source.Code);
        line.Parsed.Address = address;
    }
}

// The address that stands before an instruction or data like a label.
std::optional<std::int32_t> ReadColumn(const Statement& statement) {
    constexpr std::size_t digits = 4;
    if (statement.Labels.empty() || !(statement.IsWholeInstruction() || statement.IsData())) return {};
    View name = statement.Labels[0].Name;
    if (name.ends_with(u'H')) name.remove_suffix(1);
    return name.size() == digits ? m8085::ReadHexNumber(name, 0xFFFF) : std::nullopt;
}

// Whether each of the addresses is that of the instruction before plus its length.
bool HasColumnOfAddresses(const std::vector<Line>& lines) {
    std::optional<std::int32_t> next;
    bool isColumn = false;
    for (const Line& line : lines) {
        const Statement& statement = line.Parsed;
        if (statement.IsOrigin() || statement.IsData() || statement.What == Kind::Unknown) next = {};
        if (!statement.IsInstruction()) continue;
        const auto address = ReadColumn(statement);
        if (address && next && *address != *next) return false;
        isColumn = isColumn || (address && next);
        if (address) next = address;
        if (next) *next += statement.Row == nullptr ? 1 : assembler::InstructionLength(statement.Row->Opcode);
    }
    return isColumn;
}

// Data may stand elsewhere than after the line before, and no label of theirs begins with a digit.
void ReadColumnOfAddresses(std::vector<Line>& lines) {
    const bool isColumn = HasColumnOfAddresses(lines);
    for (Line& line : lines) {
        Statement& statement = line.Parsed;
        const auto address = ReadColumn(statement);
        const bool isMeant = isColumn || (address && statement.IsData() && statement.Labels[0].Name[0] <= u'9');
        if (isMeant && !statement.Address) statement.Address = address;
    }
}

void ReadStatements(std::vector<Line>& lines) {
    std::optional<std::int32_t> instruction;  // whose other bytes may follow, its address
    for (Line& line : lines) {
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
    }
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
    for (SourceLine& divided : DivideLines(source)) {
        Line& line = lines.emplace_back();
        line.Number = static_cast<int>(lines.size());
        line.Source = std::move(divided);
        for (const Text& change : line.Source.Changes) line.Say(change);
    }
    MoveNumbers(lines);
    ReadStatements(lines);
    ReadColumnOfAddresses(lines);
    MoveRemarks(lines);
    const Names targets = CutAtEnd(lines);
    TakeAwayProse(lines, targets);
    CloseLabels(lines, targets);
    return lines;
}

}  // namespace conversion
