#include "conversion/conversion.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "assembler/assembler.h"
#include "assembler/explanation.h"
#include "assembler/source_preparation.h"
#include "assembler/warnings.h"
#include "conversion/expression.h"
#include "conversion/layout.h"
#include "conversion/program_lines.h"
#include "conversion/source_lines.h"
#include "conversion/statement.h"
#include "machine/number_format.h"
#include "machine/text.h"

namespace conversion {

namespace {

using m8085::UpperCase;
using m8085::Wide;

Text IsComment(const Text& what) {
    return what + u" is a comment now";
}

Text Address(std::int32_t address) {
    return Wide(m8085::FormatHexLong(address));
}

// Where it goes, and whether that is where it was.
Text NewPlace(const Place& place) {
    const bool isSame = place.NewAddress == place.Address;
    return Address(place.NewAddress) + (isSame ? Text() : u", not at " + Address(place.Address));
}

// Whether other assemblers compare with it, or write it after a number for its base.
bool IsOperator(View word, bool isAfterNumber) {
    constexpr View operators[] = {u"EQ", u"NE", u"LT", u"LE", u"GT", u"GE"};
    constexpr View bases[] = {u"B", u"D", u"O", u"Q"};
    const Text upper = UpperCase(word);
    return m8085::Contains(operators, upper) || (isAfterNumber && m8085::Contains(bases, upper));
}

// 0 where it takes no number.
std::int32_t LargestNumber(const Statement& statement) {
    if (statement.What == Kind::Bytes) return 0xFF;
    if (statement.What == Kind::Words || statement.What == Kind::Equal || statement.IsOrigin()) return 0xFFFF;
    if (statement.Row == nullptr || statement.Row->TakesLabel()) return 0;
    for (const std::string_view column : statement.Row->Operands)
        if (column.starts_with('I')) return column == "I8" ? 0xFF : 0xFFFF;
    return 0;
}

class Converter {
public:
    Converter(View source, bool allDecimal) : source_(UpperCase(source)), lines_(ReadProgram(source)) {
        notation_.AllDecimal = allDecimal;
    }

    Conversion Run();

private:
    void ChooseOrigin();
    void FindNotation();
    void PlaceStatements();

    void ConvertLine();
    void ConvertLabelsAlone();
    bool LabelsGo() const;
    void MakeComment(bool ofLabels, const Text& more = {});
    void ConvertOrigin();
    void ConvertEnd();
    void ConvertDefinition();
    bool CollectBytes();
    bool AreInstructionsAfter() const;
    bool IsRunInto() const;
    void NoteFormerAddress(std::int32_t number);
    void ConvertInterrupt();
    void ConvertInstruction();
    void ConvertNumber(const Operand& operand, std::int32_t largest);
    void ConvertBranch(const Operand& operand);
    Text LabelOf(std::size_t line);
    bool IsRemark(View rest) const;
    bool ConvertRest();
    bool HasReadableNumber() const;
    void ConvertLabels();
    void NoteReading(const Operand& operand, const Value& value, const Choice& choice);

    std::string ComposeData() const;
    void LeaveFirstOfData();
    void SayWhatIsLeft();
    void SayFaults(const assembler::PreparedProgram& program);

    Line& Here() { return lines_[line_]; }
    const Statement& Parsed() const { return lines_[line_].Parsed; }
    const Place& PlaceHere() const { return layout_->PlaceOf(line_); }

    Text source_;  // in upper case
    Notation notation_;
    std::vector<Line> lines_;
    std::vector<Statement> statements_;
    std::set<Text> labels_;  // that jumps and calls can go to
    std::optional<Layout> layout_;
    std::size_t line_ = 0;
    bool isBeginSaid_ = false;                        // where a run begins
    bool withFinalH_ = true;                          // is how numbers are written
    bool hasDecimal_ = false;                         // some number that is surely decimal
    std::vector<std::pair<std::size_t, Text>> bare_;  // numbers that may be decimal, and their lines
    std::map<std::size_t, Text> newLabels_;           // by their lines
    std::map<std::int32_t, std::uint8_t> data_;
    Conversion result_;
};

Conversion Converter::Run() {
    ChooseOrigin();
    FindNotation();
    PlaceStatements();
    for (line_ = 0; line_ < lines_.size(); ++line_) ConvertLine();
    for (const Line& line : lines_) result_.Program += line.Converted();
    result_.Data = ComposeData();
    SayWhatIsLeft();
    for (const Line& line : lines_) result_.Notes.insert(result_.Notes.end(), line.Notes.begin(), line.Notes.end());
    return std::move(result_);
}

// Where nothing before its first instruction says the origin, that is where a run begins.
void Converter::ChooseOrigin() {
    isBeginSaid_ = std::ranges::any_of(lines_, [](const Line& line) {
        return line.Parsed.What == Kind::Begin || (line.Parsed.What == Kind::End && !line.Parsed.Operands.empty());
    });
    for (Line& line : lines_) {
        if (line.Parsed.What == Kind::Origin || line.Parsed.IsInstruction()) return;
        if (line.Parsed.What == Kind::Begin) line.Parsed.What = Kind::Origin;
    }
}

// A final D or B says the base where some number with it has no room as a hexadecimal one. A program with numbers and
// none with a final H gets such without it.
void Converter::FindNotation() {
    bool hasFinalH = notation_.AllDecimal;
    bool hasBare = false;
    for (const Line& line : lines_) {
        const std::int32_t largest = LargestNumber(line.Parsed);
        for (const Operand& operand : line.Parsed.Operands) {
            const Text upper = UpperCase(operand.Text);
            const auto value = ReadNumber(upper);
            if (largest == 0 || upper[0] > u'9' || !value) continue;
            const bool isOurs = value->Number <= largest && value->Number == assembler::ReadNumber(upper);
            if (isOurs) (upper.ends_with(u'H') ? hasFinalH : hasBare) = true;
            notation_.HasD = notation_.HasD || (!isOurs && upper.ends_with(u'D'));
            notation_.HasB = notation_.HasB || (!isOurs && upper.ends_with(u'B'));
        }
    }
    withFinalH_ = hasFinalH || !hasBare || notation_.HasD || notation_.HasB;
    hasDecimal_ = notation_.HasD;
}

void Converter::PlaceStatements() {
    bool areAddressesLost = false;
    for (const Line& line : lines_) {
        statements_.push_back(line.Parsed);
        areAddressesLost = areAddressesLost || IsFormerPlacement(line.Source.Comment);
    }
    layout_.emplace(statements_, areAddressesLost, notation_);
    for (std::size_t line = 0; line < lines_.size(); ++line)
        for (const Label& label : statements_[line].Labels)
            if (!layout_->PlaceOf(line).IsOfData && statements_[line].What != Kind::Equal) labels_.insert(label.Name);
}

void Converter::ConvertLine() {
    switch (Parsed().What) {
        case Kind::Origin: ConvertOrigin(); break;
        case Kind::Begin:
        case Kind::End: ConvertEnd(); break;
        case Kind::Interrupt: ConvertInterrupt(); break;
        case Kind::Instruction: ConvertInstruction(); break;
        case Kind::Bytes:
        case Kind::Words:
        case Kind::Space:
        case Kind::Equal: return ConvertDefinition();
        case Kind::Heading: MakeComment(LabelsGo()); break;
        case Kind::Nothing: return ConvertLabelsAlone();
        case Kind::Unknown: return;
    }
    ConvertLabels();
}

// Labels of data, to which no jump can go, do not stay in the program.
bool Converter::LabelsGo() const {
    const auto stays = [this](const Label& label) { return layout_->IsAmbiguous(label.Name) || !IsName(label.Name); };
    return PlaceHere().IsOfData && PlaceHere().IsKnown && std::ranges::none_of(Parsed().Labels, stays);
}

// Says so, and more about it. In the comment labels are without their colons, and each but the last is a comment of its
// own, which another conversion can read.
void Converter::MakeComment(bool ofLabels, const Text& more) {
    const bool isOfLabelsAlone = Parsed().What == Kind::Nothing;
    Here().Say(IsComment(isOfLabelsAlone ? u"the label " + Parsed().Labels[0].Name : Parsed().Operation) + more);
    if (!ofLabels) return Here().MakeComment(Parsed().At);
    for (const Label& label : Parsed().Labels) {
        const bool isLast = &label == &Parsed().Labels.back();
        if (label.ColonAt || !isLast) Here().Source.Code[label.ColonAt.value_or(label.End())] = isLast ? u' ' : u';';
    }
    Here().MakeComment();
    Here().Parsed.Labels.clear();
}

void Converter::ConvertLabelsAlone() {
    if (Parsed().Labels.empty() || !LabelsGo()) return ConvertLabels();
    MakeComment(true, u", for " + NewPlace(PlaceHere()));
}

void Converter::ConvertOrigin() {
    if (!layout_->ReadOnly(line_)) return;
    std::size_t first = line_ + 1;  // instruction
    while (first < lines_.size() && !lines_[first].Parsed.IsInstruction() && lines_[first].Parsed.What != Kind::Origin)
        ++first;
    const bool isMoved = first < lines_.size() && lines_[first].Parsed.IsInstruction() &&
                         layout_->PlaceOf(first).NewAddress != layout_->PlaceOf(first).Address;
    MakeComment(LabelsGo(), isMoved ? u"; the program goes on at " + NewPlace(layout_->PlaceOf(first)) : Text());
    if (!isMoved || isBeginSaid_) return;
    const auto begin = std::ranges::find_if(statements_, &Statement::IsInstruction) - statements_.begin();
    if (layout_->PlaceOf(first).Address < layout_->PlaceOf(static_cast<std::size_t>(begin)).Address)
        Here().SayFault(u"the program may have begun here, and begins with its first instruction now");
}

// Both END and BEGIN may say where a run begins.
void Converter::ConvertEnd() {
    const auto& operands = Parsed().Operands;
    const auto value = operands.empty() ? std::nullopt : layout_->Read(operands[0].Text, line_);
    if (Parsed().What == Kind::Begin && (!value || Parsed().RestAt)) return;
    MakeComment(LabelsGo());
    if (operands.empty() || (value && value->Addresses == 1 && value->Moved == m8085::ProgramOrigin)) return;
    const auto first = std::ranges::find_if(statements_, &Statement::IsInstruction);
    if (first != statements_.end() && first->Operation == u"JMP" && first->Target() == UpperCase(operands[0].Text))
        return;
    const auto line = value ? layout_->InstructionAt(static_cast<std::int32_t>(value->Number)) : std::nullopt;
    if (!line || layout_->PlaceOf(*line).NewAddress != m8085::ProgramOrigin)
        Here().SayFault(u"the program began at " + operands[0].Text + u", and begins with its first instruction now");
}

void Converter::ConvertDefinition() {
    const bool isEqual = Parsed().What == Kind::Equal;
    for (const Label& label : Parsed().Labels)
        if (layout_->IsAmbiguous(label.Name)) return Here().SayFault(label.Name + u" has more than one value");
    for (const Label& label : Parsed().Labels)
        if (!IsName(label.Name)) return Here().SayFault(label.Name + u" is not a name");
    if (!isEqual && !PlaceHere().IsKnown) return Here().SayFault(u"where in memory this belongs is not known");
    const bool isNameless = isEqual && Parsed().Labels.empty();
    if (isNameless || Parsed().Operands.empty() || Parsed().RestAt || !CollectBytes())
        return Here().SayFault(u"what follows " + Parsed().Operation + u" cannot be read" +
                               (isEqual ? Text() : u"; it belongs to " + NewPlace(PlaceHere())));
    const std::int32_t size = PlaceHere().Size;
    const Text count = Wide(std::to_string(size)) + (size == 1 ? u" byte at " : u" bytes at ");
    MakeComment(true, isEqual ? Text() : u", for " + count + NewPlace(PlaceHere()));
    if (!isEqual && IsRunInto()) Here().SayFault(u"the instruction before goes on into these bytes");
}

bool Converter::AreInstructionsAfter() const {
    const auto isInstruction = [](const Line& line) { return line.Parsed.IsInstruction(); };
    return std::any_of(lines_.begin() + static_cast<std::ptrdiff_t>(line_) + 1, lines_.end(), isInstruction);
}

// The instruction after these data comes to stand where they did: a run goes on with it, and a subroutine that reads
// the bytes after its call finds it.
bool Converter::IsRunInto() const {
    constexpr View last[] = {u"JMP", u"RET", u"PCHL", u"HLT", u"RST"};
    std::size_t above = line_;
    while (above > 0 && layout_->PlaceOf(above - 1).Size == 0) --above;
    if (above == 0 || PlaceHere().Size == 0 || !AreInstructionsAfter()) return false;
    const Statement& before = statements_[above - 1];
    const Place& place = layout_->PlaceOf(above - 1);
    return before.IsInstruction() && !m8085::Contains(last, before.Operation) &&
           place.Address + place.Size == PlaceHere().Address;
}

// Stores what the definition puts into memory. False where it cannot be read.
bool Converter::CollectBytes() {
    const bool isEqual = Parsed().What == Kind::Equal;
    if (isEqual || Parsed().What == Kind::Space) {
        const Operand& operand = Parsed().Operands[0];
        const auto value = Parsed().Operands.size() == 1 ? layout_->Read(operand.Text, line_) : std::nullopt;
        const auto choice = Choose(value, 0xFFFF);
        if (choice) NoteReading(operand, *value, *choice);
        return isEqual ? value.has_value() : choice.has_value();
    }
    std::vector<std::int32_t> bytes;
    for (const Operand& operand : Parsed().Operands) {
        if (operand.IsString() && Parsed().What == Kind::Bytes) {
            if (operand.Text.find(u'\\') != Text::npos) Here().Say(u"each \\ in " + operand.Text + u" is a byte");
            for (const char16_t character : View(operand.Text).substr(1, operand.Text.size() - 2)) {
                if (character >= 0x80) return false;
                bytes.push_back(character);
            }
            continue;
        }
        const auto value = layout_->Read(operand.Text, line_);
        const auto choice = Choose(value, LargestNumber(Parsed()));
        if (!choice || layout_->IsLost(*value)) return false;
        NoteReading(operand, *value, *choice);
        if (Parsed().What == Kind::Words && value->Addresses == 0) NoteFormerAddress(choice->Number);
        bytes.push_back(choice->Number & 0xFF);
        if (Parsed().What == Kind::Words) bytes.push_back(choice->Number >> 8);
    }
    std::int32_t address = PlaceHere().NewAddress;
    for (const std::int32_t byte : bytes) data_[address++ & (m8085::MemorySize - 1)] = static_cast<std::uint8_t>(byte);
    return true;
}

// Only the last instruction can be told to be the return to a monitor.
void Converter::ConvertInterrupt() {
    if (Parsed().Operation != u"RST" || Parsed().Operands.size() != 1 || Parsed().RestAt) return;
    if (AreInstructionsAfter()) return;
    const Operand& operand = Parsed().Operands[0];
    const auto number = ReadNumber(operand.Text);
    if (!number || (number->Number != 1 && number->Number != 5)) return;
    const std::size_t length = operand.At + operand.Text.size() - Parsed().At;
    if (!m8085::Trimmed(View(Here().Source.Code).substr(Parsed().At + length)).empty()) return;
    const bool isLower = Here().Source.Code[Parsed().At] == u'r';
    Here().Replace(Parsed().At, length, isLower ? u"hlt" : u"HLT");
    Here().Say(u"RST " + operand.Text + u", a return to a monitor, became HLT");
}

void Converter::ConvertInstruction() {
    if ((Parsed().RestAt && !ConvertRest()) || !Parsed().IsWholeInstruction()) return;
    if (Parsed().Row->TakesLabel()) return ConvertBranch(Parsed().Operands.back());
    const std::int32_t largest = LargestNumber(Parsed());
    if (largest > 0) ConvertNumber(Parsed().Operands.back(), largest);
}

void Converter::NoteReading(const Operand& operand, const Value& value, const Choice& choice) {
    if (choice.IsSurelyDecimal)
        hasDecimal_ = true;
    else if (value.IfDecimal != value.Number)
        bare_.emplace_back(line_, operand.Text);
}

// LXI and DW may mean a mere count.
void Converter::NoteFormerAddress(std::int32_t number) {
    if (!layout_->HasChanged(number)) return;
    const Text text = Address(number) + u" lies inside the program, where something else stands now";
    const bool mayBeCount = Parsed().Operation == u"LXI" || Parsed().What == Kind::Words;
    if (mayBeCount && !layout_->IsInProgram(number))
        Here().Say(text);
    else
        Here().SayFault(text);
}

void Converter::ConvertNumber(const Operand& operand, std::int32_t largest) {
    const auto value = layout_->Read(operand.Text, line_);
    const auto choice = Choose(value, largest);
    if (!choice) return;
    if (layout_->IsLost(*value)) return Here().SayFault(u"what stood at " + operand.Text + u" stands elsewhere now");
    NoteReading(operand, *value, *choice);
    const bool isByte = largest == 0xFF;
    // The stack begins below the address that SP gets.
    const bool isOfStack = Parsed().Operation == u"LXI" && UpperCase(Parsed().Operands[0].Text).starts_with(u'S');
    if (!isByte && value->Addresses == 0) NoteFormerAddress((choice->Number - (isOfStack ? 1 : 0)) & 0xFFFF);
    if (assembler::ReadNumber(UpperCase(operand.Text)) == choice->Number && value->Addresses == 0) return;
    const Text number = FormatNumber(choice->Number, isByte, withFinalH_ || choice->IsSurelyDecimal);
    Here().Replace(operand.At, operand.Text.size(), number);
    Here().Say(operand.Text + u" became " + number);
}

void Converter::ConvertBranch(const Operand& operand) {
    const Text name = Parsed().Target();
    const bool hasColon = operand.Text.ends_with(u':');
    if (labels_.contains(name)) {
        if (!hasColon) return;
        Here().Replace(operand.At + name.size(), 1, {});
        return Here().Say(u"there is no colon after " + name + u" any more");
    }
    const auto value = layout_->Read(name, line_);
    const auto choice = Choose(value, 0xFFFF);
    if (!choice) return;
    const auto address = value->Addresses == 1 ? static_cast<std::int32_t>(value->Number) : choice->Number;
    const auto line = layout_->InstructionAt(address);
    if (!line) return Here().SayFault(u"no instruction is known to begin at " + Address(address));
    const Text label = LabelOf(*line);
    Here().Replace(operand.At, operand.Text.size(), label);
    Here().Say(operand.Text + u" became the label " + label);
}

// One that the instruction has, or a new one.
Text Converter::LabelOf(std::size_t line) {
    for (std::size_t above = line;; --above) {
        for (const Label& label : lines_[above].Parsed.Labels)
            if (!layout_->IsAmbiguous(label.Name)) return label.Name;
        if (above == 0 || lines_[above - 1].Parsed.What != Kind::Nothing) break;
    }
    Text& label = newLabels_[line];
    if (!label.empty()) return label;
    label = u"L" + Address(layout_->PlaceOf(line).Address);
    while (source_.find(label) != Text::npos) label += u'_';
    lines_[line].Replace(lines_[line].Parsed.At, 0, label + u": ");
    lines_[line].Say(u"the label " + label + u" is new");
    return label;
}

bool Converter::HasReadableNumber() const {
    if (LargestNumber(Parsed()) == 0 && (Parsed().Target().empty() || IsName(Parsed().Target()))) return true;
    return layout_->Read(Parsed().Operands.back().Text, line_).has_value();
}

// Whether what follows the operands begins like a comment: with a word that can be no part of them and of no other
// instruction, or with the bytes of a listing.
bool Converter::IsRemark(View rest) const {
    const View code = lines_[line_].Source.Code;
    if (!m8085::IsBlank(code[*Parsed().RestAt - 1])) return false;
    const View first = rest.substr(0, rest.find_first_of(u" \t"));
    if (ReadListing(u"0000 " + Text(first), Parsed())) return true;
    const View text = rest.substr(std::min(rest.find_first_not_of(u"-#(.:<> \t"), rest.size()));
    const View word = text.substr(0, text.find_first_of(u" \t,.;()-"));
    const bool compares = View(u"<>=").find(rest[0]) != View::npos && !rest.starts_with(u"<-");
    const bool separates = rest[0] == u':' && assembler::IsMnemonic(UpperCase(word));
    const bool isOperator = IsOperator(word, LargestNumber(Parsed()) > 0);
    if (compares || separates || isOperator || MayBeInstruction(text, code.substr(Parsed().At))) return false;
    return IsWord(word) || first == u"#";
}

// False where it may not be a comment.
bool Converter::ConvertRest() {
    const View rest = View(Here().Source.Code).substr(*Parsed().RestAt);
    if (!IsRemark(rest) || !Parsed().IsWholeInstruction() || !HasReadableNumber()) {
        Here().SayFault(Text(m8085::Trimmed(rest)) + u" does not belong to " + Parsed().Operation +
                        u", and may be a comment or not");
        return false;
    }
    Here().Replace(*Parsed().RestAt, rest.size(), u"; " + WithoutColons(rest));
    Here().Say(IsComment(u"the text after the instruction"));
    return true;
}

void Converter::ConvertLabels() {
    for (const Label& label : Parsed().Labels) {
        if (label.ColonAt == label.End()) continue;
        if (label.ColonAt) Here().Replace(*label.ColonAt, 1, {});
        Here().Replace(label.End(), 0, u":");
        Here().Say(u"the label " + label.Name + u" has its colon now");
    }
}

// At most sixteen bytes in a line.
std::string Converter::ComposeData() const {
    constexpr int mostInLine = 16;
    std::string text;
    std::int32_t next = -1;
    int count = 0;
    for (const auto& [address, byte] : data_) {
        if (address != next || count == mostInLine) {
            text += (text.empty() ? "" : "\r\n") + m8085::FormatHexLong(address) + " :";
            count = 0;
        }
        text += ' ' + m8085::FormatHexByte(byte);
        next = address + 1;
        ++count;
    }
    return text.empty() ? text : text + "\r\n";
}

// Where no number is surely decimal, the first of the data deserves a word if it may be, unless it is an address: in
// the file of data nobody sees how it was written.
void Converter::LeaveFirstOfData() {
    constexpr std::size_t addressDigits = 4;
    std::erase_if(bare_, [this](const std::pair<std::size_t, Text>& bare) {
        const bool isOfInstruction = lines_[bare.first].Parsed.What == Kind::Instruction;
        return isOfInstruction || bare.second.size() >= addressDigits;
    });
    bare_.resize(std::min(bare_.size(), std::size_t{1}));
}

// What may not be what it looks like, and what does not assemble.
void Converter::SayWhatIsLeft() {
    if (!hasDecimal_) LeaveFirstOfData();
    for (const auto& [line, number] : bare_) lines_[line].Say(number + u" is taken as hexadecimal");
    const assembler::PreparedProgram program = assembler::PrepareProgram(result_.Program);
    for (const auto& [line, text] : assembler::FindWarnings(program)) {
        line_ = static_cast<std::size_t>(line - 1);
        const bool isSaid = std::ranges::count(bare_, line_, &std::pair<std::size_t, Text>::first) > 0;
        if (!Here().IsFaulty() && !isSaid) Here().Say(text);
    }
    SayFaults(program);
}

void Converter::SayFaults(const assembler::PreparedProgram& program) {
    for (const auto& [number, message, cause] : assembler::FindFaults(program)) {
        Line& line = lines_[static_cast<std::size_t>(number - 1)];
        Text text = message;
        if (!cause.empty()) text.append(u" (").append(cause).append(u")");
        if (!line.IsFaulty()) line.SayFault(std::move(text));
    }
    if (const auto excess = assembler::ExplainExcessLength(program.Length, program.LabelSplits))
        result_.Notes.push_back({0, true, Wide(*excess)});
}

}  // namespace

Conversion ConvertProgram(View source, bool allDecimal) {
    const assembler::PreparedProgram program = assembler::PrepareProgram(source);
    const bool isFine = !assembler::ExplainExcessLength(program.Length, program.LabelSplits) &&
                        assembler::FindFaults(program).empty() && assembler::FindWarnings(program).empty();
    if (isFine && !allDecimal) return {Text(source), {}, {}};
    return Converter(source, allDecimal).Run();
}

}  // namespace conversion
