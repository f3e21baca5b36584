#include "assembler/explanation.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <tuple>
#include <utility>
#include <vector>

#include "assembler/assembler.h"
#include "assembler/checked_program.h"
#include "assembler/directives.h"
#include "assembler/disassembly.h"
#include "assembler/instruction_table.h"
#include "assembler/line_words.h"
#include "machine/number_format.h"
#include "machine/text.h"

namespace assembler {

namespace {

using Pair = std::pair<View, View>;
using m8085::Contains;
using m8085::Wide;

constexpr View interruptMnemonics[] = {u"RST", u"RIM", u"SIM", u"EI", u"DI"};

// With a register, and the same with a number.
constexpr Pair twins[] = {{u"MOV", u"MVI"}, {u"ADD", u"ADI"}, {u"ADC", u"ACI"}, {u"SUB", u"SUI"}, {u"SBB", u"SBI"},
                          {u"ANA", u"ANI"}, {u"ORA", u"ORI"}, {u"XRA", u"XRI"}, {u"CMP", u"CPI"}};

// Of numbers elsewhere: what they are called, what they end in, and their base.
constexpr std::tuple<View, View, int> notations[] = {
    {u"decimal ", u"", 10}, {u"decimal ", u"D", 10}, {u"binary ", u"B", 2}};

auto PlaceOfRegister(std::string_view name) {
    return std::ranges::find(RegisterNames, name);
}

void AppendOnce(std::vector<Text>& words, const Text& word) {
    if (!Contains(words, word)) words.push_back(word);
}

// "A", "A or B", "A, B or C"; nothing for no word.
std::optional<Text> Choice(const std::vector<Text>& words) {
    return words.empty() ? std::nullopt : std::optional(m8085::Joined(words, u", ", u" or "));
}

// Whether one letter too many, too few, another or swapped with its neighbour makes the difference.
bool IsOneLetterOff(View one, View other) {
    if (one.size() > other.size()) std::swap(one, other);
    if (other.size() - one.size() > 1 || one == other) return false;
    const auto differ = std::ranges::mismatch(one, other);
    const View rest(differ.in1, one.end());
    const View otherRest(differ.in2, other.end());
    if (one.size() < other.size()) return rest == otherRest.substr(1);
    if (rest.substr(1) == otherRest.substr(1)) return true;
    return rest.size() > 1 && rest[0] == otherRest[1] && rest[1] == otherRest[0] &&
           rest.substr(2) == otherRest.substr(2);
}

// One line that cannot be assembled, or one label that no line defines, and what can be asked about it. Each answer is
// what the explanation is to name, as a rule the word at fault; or nothing.
struct Fault {
    using Answer = std::optional<Text>;

    const CheckedProgram& Program;
    const CheckedLine& Line;
    std::array<View, 4> Words;            // the first of the line; or the label alone
    std::size_t Place = 0;                // of the word at fault
    const InstructionRow* Row = nullptr;  // of the words before that; nullptr if there is none

    View Word() const { return Words[Place]; }
    bool IsNumberWanted() const { return Row->Operands[Place - 1].starts_with('I'); }
    bool IsByteWanted() const { return Row->Operands[Place - 1] == "I8"; }

    Answer If(bool applies) const { return applies ? Answer(Shortened(Word())) : std::nullopt; }

    Answer Always() const { return If(true); }
    Answer IsMissing() const { return If(Word().empty()); }
    Answer IsAlone() const { return If(Words[1].empty()); }
    Answer IsRegister() const { return If(assembler::IsRegister(Word())); }
    Answer IsInterruptMnemonic() const { return If(Contains(interruptMnemonics, Word())); }
    Answer HasComma() const { return If(Word().find(u',') != View::npos); }
    Answer HasColon() const { return If(Word().ends_with(u':')); }
    Answer IsBeforeColon() const { return If(Words[1] == u":"); }
    Answer IsNumber() const { return If(ReadNumber(Word()).has_value()); }
    bool IsNumberThatFits() const { return ReadNumber(Word()).value_or(0x10000) <= (IsByteWanted() ? 0xFF : 0xFFFF); }
    Answer IsTooLargeForByte() const { return If(IsByteWanted() && IsNumber()); }
    Answer IsAddressBeforeMnemonic() const { return If(IsMnemonic(Words[1]) && IsAddress()); }
    Answer IsProbablyLabel() const { return If(IsMnemonic(Words[1]) || IsJumpedTo(Word())); }
    Answer IsSecondInstruction() const { return If(IsMnemonic(Word())); }
    Answer IsCharacter() const { return If(Word().find_first_of(u"\"'") != View::npos); }
    Answer IsPairOfJump() const { return If(Word() == u"HL" && Line.Words[0] == u"JMP"); }
    Answer IsMisplaced() const { return If(Program.MisplacedLabels.contains(Text(Word()))); }

    Answer BeginsWithSign() const {
        const char16_t first = Word()[0];
        return If(first < 0x80 && !m8085::IsLetter(first) && !m8085::IsDecimalDigit(first) && first != u'_');
    }

    // An address rather than a name: "2000", "C010", "FE00H", but not "FACE".
    Answer IsAddress() const {
        const bool isName = !Word().ends_with(u'H') && std::ranges::none_of(Word(), m8085::IsDecimalDigit);
        const bool hasFourDigits = WithoutFinalH(Word()).size() == 4 && !isName;
        return If(IsNumber() && (m8085::IsDecimalDigit(Word()[0]) || hasFourDigits));
    }

    Answer HasLetterO() const {
        Text withZeros(Word());
        std::ranges::replace(withZeros, u'O', u'0');
        return If(ReadNumber(withZeros).has_value());
    }

    Answer HasStickingComment() const {
        return If(std::ranges::any_of(Line.Words, [](View word) { return word.find(u';') != View::npos; }));
    }

    Answer IsAfterColonInComment() const { return If(Line.Comment == u";"); }

    // The mark of what is a comment elsewhere.
    Answer IsForeignComment() const {
        if (!Line.Comment.empty()) return Text(Line.Comment);
        for (const View word : Line.Words)
            if (const View mark = FindCommentMark(word);
                !mark.empty() && mark != u";" && (mark != u"\"" || word == Line.Words[0]))
                return Text(mark);
        return {};
    }

    bool IsJumpedTo(View word) const { return Program.Targets.contains(Text(word)); }
    Answer IsDefined() const { return If(Contains(Program.Labels, Word())); }
    Answer IsInLastPlace() const { return If(Program.UnreachableLabel == Word()); }

    // The longest mnemonic that the word begins with, where a comma follows after more, or the number that it takes.
    Answer MnemonicInFront() const {
        const InstructionRow* longest = nullptr;
        for (const InstructionRow& row : InstructionRows())
            if ((longest == nullptr || row.Mnemonic.size() > longest->Mnemonic.size()) &&
                Word().starts_with(Wide(row.Mnemonic)))
                longest = &row;
        if (longest == nullptr) return {};
        const View rest = Word().substr(longest->Mnemonic.size());
        if (rest.empty() || rest[0] == u',') return {};
        const bool takesNumber = longest->Operands[0].starts_with('I') && !longest->TakesLabel();
        if (!HasComma() && (!takesNumber || !ReadNumber(rest) || IsJumpedTo(Word()))) return {};
        return Wide(longest->Mnemonic);
    }

    // First on the line, or after a label or a name.
    Answer IsDirective() const {
        const View first = Line.Words[0];
        const View second = Line.Words.size() > 1 ? View(Line.Words[1]) : View();
        if (IsMnemonic(first)) return {};
        const bool isLabel = IsMnemonic(second) || (IsJumpedTo(first) && !Contains(Program.Labels, first));
        const Answer directive = isLabel ? std::nullopt : ExplainDirective(first);
        return directive ? directive : ExplainDirective(second);
    }

    // The instruction that does with a number what this one does with a register.
    Answer TwinWithNumber() const {
        const auto* found = std::ranges::find(twins, Words[0], &Pair::first);
        const bool isFirstOfTwo = Place == 1 && !Row->Operands[1].empty();
        if (found == std::end(twins) || isFirstOfTwo || !IsNumber() || IsRegister()) return {};
        return Text(found->second) + u" takes a number: " + WithMnemonic(found->second);
    }

    Answer TwinWithRegister() const {
        const auto* found = std::ranges::find(twins, Words[0], &Pair::second);
        if (found == std::end(twins) || !IsRegister()) return {};
        return Text(found->first) + u" takes a register: " + WithMnemonic(found->first);
    }

    // What can stand in the place of the word, as programs write it, and what stands there.
    Answer Registers() const {
        std::vector<Text> choices;
        for (const std::string_view name : RegisterNames)
            if (std::ranges::any_of(InstructionRows(), [&](const InstructionRow& row) {
                    return row.Mnemonic == Row->Mnemonic && row.Operands[Place - 1] == name &&
                           (Place < 2 || row.Operands[0] == Row->Operands[0]);
                }))
                choices.push_back(Wide(RegisterText(name)));
        constexpr std::size_t allRegisters = 7;
        const bool isMany = choices.size() >= allRegisters;
        const View many = choices.size() > allRegisters ? u"a register or M" : u"a register";
        return (isMany ? Text(many) : *Choice(choices)) + (Place == 2 ? u" as its second operand" : u"") +
               (IsMissing() ? u", which is missing" : u", not " + *Always());
    }

    // A right line with the mnemonic, and with its first operand where that is right.
    Text Example() const {
        const auto order = [this](const InstructionRow& row) {
            const std::string_view other = row.Operands[1].empty() ? "A" : row.Operands[1];
            const bool fits = row.Mnemonic == Row->Mnemonic && (Place < 2 || row.Operands[0] == Row->Operands[0]) &&
                              row.Operands[0] != other;
            return std::tuple(!fits, PlaceOfRegister(row.Operands[0]), PlaceOfRegister(row.Operands[1]));
        };
        const InstructionRow& example = *std::ranges::min_element(InstructionRows(), {}, order);
        return m8085::LowerCase(Wide(Disassemble(std::array<std::uint8_t, 3>{example.Opcode, 0x05, 0x90})));
    }

    // The line with the mnemonic in the place of its own.
    Text WithMnemonic(View mnemonic) const {
        const Text before = Place == 2 ? Text(Words[1]) + u"," : Text();
        return m8085::LowerCase(Text(mnemonic) + u" " + before + Shortened(Word()));
    }

    // What the word is to somebody who does not write it in hexadecimal.
    Answer OtherMeaning() const {
        const std::int32_t largest = IsByteWanted() ? 0xFF : 0xFFFF;
        for (const auto& [name, suffix, base] : notations) {
            if (!Word().ends_with(suffix)) continue;
            const View digits = Word().substr(0, Word().size() - suffix.size());
            const auto value =
                static_cast<std::int32_t>(m8085::ReadDigits(digits, base, largest).value_or(largest + 1));
            if (value > largest) continue;
            const Text meaning = Wide(m8085::FormatHexLong(value)).substr(IsByteWanted() ? 2 : 0);
            return Text(name).append(digits).append(u" is ").append(meaning);
        }
        return {};
    }

    Answer SimilarMnemonic() const {
        std::vector<Text> similar;
        for (const InstructionRow& row : InstructionRows())  // one letter is one letter off from too many
            if (Word().size() > 1 && IsOneLetterOff(Word(), Wide(row.Mnemonic)))
                AppendOnce(similar, Wide(row.Mnemonic));
        return Choice(similar);
    }

    Answer SimilarLabel() const {
        std::vector<Text> similar;
        for (const Text& label : Program.Labels)
            if (!label.empty() && IsOneLetterOff(Word(), label)) AppendOnce(similar, label);
        return Choice(similar);
    }
};

// A fault that has the answer is explained by the sentence, in which * is the answer, @ the first word of the line, and
// # an example of how to write it.
struct Rule {
    Fault::Answer (Fault::*Finds)() const;
    View Sentence;
};

constexpr View strayComma = u"a comma stands between two operands and nowhere else";
constexpr View needsColon = u"if * is a label, it needs a colon: *:";
constexpr View fullTable = u"all 101 places that there are for labels, jumps and calls are taken";

// Of each table the first rule that applies counts.
constexpr Rule anywhereRules[] = {
    {&Fault::IsAfterColonInComment, u"a colon in a comment breaks the line there: leave it out"},
    {&Fault::IsForeignComment, u"a comment begins with \";\", not with *"},
    {&Fault::IsDirective, u"*"},
    {&Fault::HasStickingComment, u"a comment needs a blank before its \";\""}};

constexpr Rule mnemonicRules[] = {
    {&Fault::HasColon, fullTable},
    {&Fault::MnemonicInFront, u"a blank belongs after *"},
    {&Fault::HasComma, strayComma},
    {&Fault::IsInterruptMnemonic, u"this machine has no interrupts, and so no *"},
    {&Fault::IsBeforeColon, u"no blank belongs between a label and its colon"},
    {&Fault::BeginsWithSign, u"a line begins with a label or a mnemonic; a comment begins with \";\""},
    {&Fault::IsAddressBeforeMnemonic, u"no address belongs before an instruction"},
    {&Fault::IsProbablyLabel, needsColon},
    {&Fault::SimilarMnemonic, u"there is no @; is * meant?"},
    {&Fault::IsAlone, needsColon},
    {&Fault::Always, u"there is no mnemonic *; a label needs a colon, and a comment a \";\" before it"}};

constexpr Rule registerRules[] = {{&Fault::HasComma, strayComma},
                                  {&Fault::TwinWithNumber, u"@ takes a register here; *"},
                                  {&Fault::Registers, u"@ takes *: #"}};

constexpr Rule numberRules[] = {
    {&Fault::IsMissing, u"the number that @ takes is missing: #"},
    {&Fault::HasComma, strayComma},
    {&Fault::HasColon, u"a colon belongs after a label only, first on its line"},
    {&Fault::TwinWithRegister, u"@ takes a number; *"},
    {&Fault::IsRegister, u"@ takes a number here, not a register: #"},
    {&Fault::IsCharacter, u"characters are not numbers: write their codes"},
    {&Fault::IsDefined, u"a label is not a number: write the address that it stands for"},
    {&Fault::OtherMeaning, u"all numbers are hexadecimal: *"},
    {&Fault::IsTooLargeForByte, u"* is too large for a byte: the largest is FF"},
    {&Fault::IsNumber, u"* is too large for 16 bits: the largest number is FFFF"},
    {&Fault::HasLetterO, u"there is a letter O in * where a 0 belongs"},
    {&Fault::Always, u"* is not a number: those are hexadecimal digits and nothing else, but for a final H"}};

constexpr Rule labelRules[] = {
    {&Fault::IsMissing, u"a jump or call needs a label to go to: jmp loop"},
    {&Fault::HasColon, u"no colon belongs after the label of a jump or call"},
    {&Fault::IsInLastPlace, u"* has the last of the 101 places for labels and jumps, where it cannot be found"},
    {&Fault::IsMisplaced, u"*: does not come first on its line, and so is not a label"},
    {&Fault::IsAddress, u"a jump or call goes to a label, not to an address: put a label there"},
    {&Fault::SimilarLabel, u"there is no label @; is * meant?"},
    {&Fault::IsPairOfJump, u"PCHL jumps to the address in HL"},
    {&Fault::Always, u"no line defines it: put *: where it is to go"}};

// For a line whose first words assemble; @ is its mnemonic.
constexpr Rule surplusRules[] = {{&Fault::IsSecondInstruction, u"a line holds one instruction: * belongs on the next"},
                                 {&Fault::Always, u"* is too much for @; a comment needs a \";\" before it"}};

// Nothing if no rule applies.
std::optional<Text> Explain(const Fault& fault, std::span<const Rule> rules) {
    for (const auto& [finds, sentence] : rules)
        if (const Fault::Answer answer = (fault.*finds)()) {
            Text text;
            for (const char16_t character : sentence) {
                if (character == u'*')
                    text += *answer;
                else if (character == u'#')
                    text += fault.Example();
                else
                    text += character == u'@' ? Shortened(fault.Words[0]) : Text(1, character);
            }
            return text;
        }
    return {};
}

// The operands are looked at in the order in which the assembler takes them.
Text ExplainOperands(Fault fault) {
    for (fault.Place = 1; fault.Place <= 2 && !fault.Row->Operands[fault.Place - 1].empty(); ++fault.Place) {
        if (fault.Row->TakesLabel()) continue;
        if (fault.IsNumberWanted()) {
            if (!fault.IsNumberThatFits()) return *Explain(fault, numberRules);
            continue;
        }
        const auto* found = FindInstruction(fault.Words[0], fault.Words[1], fault.Place == 1 ? View() : fault.Word());
        if (fault.Word().empty() || found == nullptr) return *Explain(fault, registerRules);
        fault.Row = found;
    }
    return *Explain(fault, surplusRules);
}

// A line is judged by its own first words, though the assembler puts those after the third in their places.
Text Explain(const CheckedProgram& program, const CheckedLine& line) {
    constexpr View missingLabel = u"Bad label - ";
    constexpr std::size_t places = 3;
    Fault fault{program, line, {}};
    std::copy_n(line.Words.begin(), std::min(line.Words.size(), fault.Words.size()), fault.Words.begin());
    if (const auto text = Explain(fault, anywhereRules)) return *text;
    const bool isLong = line.Words.size() > places;
    if (!isLong && line.Error.starts_with(missingLabel)) {
        fault.Words = {View(line.Error).substr(missingLabel.size())};
        return *Explain(fault, labelRules);
    }
    fault.Row = FindInstruction(fault.Words[0]);
    if (fault.Row == nullptr) return *Explain(fault, mnemonicRules);
    return !isLong && fault.Row->TakesLabel() ? Text(fullTable) : ExplainOperands(fault);
}

}  // namespace

std::u16string ExplainFailure(const PreparedProgram& program, const Assembly& failed) {
    const CheckedProgram checked = CheckProgram(program);
    if (failed.FaultLine < 1 || failed.FaultLine > std::ssize(checked.Lines)) return {};
    return Explain(checked, checked.Lines[static_cast<std::size_t>(failed.FaultLine - 1)]);
}

std::vector<LineFault> FindFaults(const PreparedProgram& program) {
    const CheckedProgram checked = CheckProgram(program);
    std::vector<LineFault> faults;
    const CheckedLine* last = nullptr;  // of those in faults
    for (const CheckedLine& line : checked.Lines) {
        const bool isSameLine = last != nullptr && last->SourceLine == line.SourceLine;
        if (line.Error.empty() || (isSameLine && (last->Comment == line.Comment || line.Comment != u";"))) continue;
        faults.push_back({line.SourceLine, line.Error, Explain(checked, line)});
        last = &line;
    }
    return faults;
}

}  // namespace assembler
