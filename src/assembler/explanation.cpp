#include "assembler/explanation.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "assembler/instruction_table.h"
#include "machine/characters.h"
#include "machine/number_format.h"

namespace assembler {

namespace {

using Text = std::u16string;
using View = std::u16string_view;

constexpr View directives[] = {u"ORG",  u"DB",   u"DW",   u"DS",    u"EQU",  u"END",     u"SET",
                               u"DEFB", u"DEFW", u"DEFS", u"MACRO", u"ENDM", u"INCLUDE", u"BEGIN"};
constexpr View interruptMnemonics[] = {u"RST", u"RIM", u"SIM", u"EI", u"DI"};

// With a register, and the same with a number.
constexpr std::pair<View, View> twins[] = {{u"MOV", u"MVI"}, {u"ADD", u"ADI"}, {u"ADC", u"ACI"},
                                           {u"SUB", u"SUI"}, {u"SBB", u"SBI"}, {u"ANA", u"ANI"},
                                           {u"ORA", u"ORI"}, {u"XRA", u"XRI"}, {u"CMP", u"CPI"}};

constexpr View registerNames[] = {u"A", u"B", u"C", u"D", u"E", u"H", u"L", u"M", u"BC", u"DE", u"HL", u"SP", u"PSW"};

bool Contains(const auto& list, View word) {
    return std::ranges::find(list, word) != std::end(list);
}

Text Wide(std::string_view ascii) {
    return {ascii.begin(), ascii.end()};
}

Text Shortened(View word) {
    constexpr std::size_t longest = 30;
    return word.size() <= longest ? Text(word) : Text(word.substr(0, longest)) + u"...";
}

// "A", "A or B", "A, B or C"
Text Choice(const std::vector<Text>& words) {
    Text text;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (i > 0) text += i + 1 == words.size() ? u" or " : u", ";
        text += words[i];
    }
    return text;
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

bool IsMnemonic(View word) {
    return FindInstruction(word) != nullptr;
}

void AppendOnce(std::vector<Text>& words, Text word) {
    if (!Contains(words, word)) words.push_back(std::move(word));
}

std::vector<Text> MnemonicsLike(View word) {
    std::vector<Text> like;
    if (word.size() < 2) return like;  // one letter is one letter off from too many
    for (const InstructionRow& row : InstructionRows())
        if (IsOneLetterOff(word, Wide(row.Mnemonic))) AppendOnce(like, Wide(row.Mnemonic));
    return like;
}

// The lines of the program as words in upper case, without comments.
std::vector<std::vector<Text>> WordsOfLines(View text) {
    std::vector<std::vector<Text>> lines(1);
    bool isInWord = false;
    bool isInComment = false;
    for (const char16_t character : text) {
        if (character == u'\n') {
            lines.emplace_back();
            isInWord = isInComment = false;
        } else if (character == u';') {
            isInComment = true;
        } else if (!isInComment && m8085::IsBlank(character)) {
            isInWord = false;
        } else if (!isInComment) {
            if (!std::exchange(isInWord, true)) lines.back().emplace_back();
            lines.back().back() += m8085::ToUpperCase(character);
        }
    }
    return lines;
}

View LineOf(View text, int line) {
    for (; line > 1; --line) text.remove_prefix(std::min(text.find(u'\n'), text.size() - 1) + 1);
    return text.substr(0, text.find(u'\n'));
}

View WithoutLast(View word) {
    return word.substr(0, word.size() - 1);
}

bool IsDecimalDigit(char16_t character) {
    return character >= u'0' && character <= u'9';
}

// Whether the word is an address rather than a name: "2000", "C010", "FE00H", but not "FACE".
bool LooksLikeAddress(View word) {
    if (!ReadNumber(word)) return false;
    const bool isNoWord = word.ends_with(u'H') || std::ranges::any_of(word, IsDecimalDigit);
    return IsDecimalDigit(word[0]) || (WithoutFinalH(word).size() == 4 && isNoWord);
}

// A page that a program is copied from may have one in place of a blank.
bool HasNoBreakSpace(View word) {
    return word.substr(0, word.find(u';')).find_first_of(u"\u00A0\u2007\u202F") != View::npos;
}

// The longest mnemonic that the word begins with and that something else than a comma follows; empty for none.
View MnemonicInFront(View word) {
    for (std::size_t length = std::min<std::size_t>(4, word.size()); length >= 2; --length)
        if (IsMnemonic(word.substr(0, length)))
            return word.substr(length).starts_with(u',') ? View() : word.substr(0, length);
    return {};
}

// The value of digits to the base, or nothing for another text and above `largest`.
std::optional<std::int32_t> ReadDigits(View digits, int base, std::int32_t largest) {
    std::int32_t value = 0;
    for (const char16_t digit : digits) {
        if (digit < u'0' || digit >= u'0' + base) return std::nullopt;
        value = value * base + (digit - u'0');
        if (value > largest) return std::nullopt;
    }
    if (digits.empty()) return std::nullopt;
    return value;
}

// What is behind the failure of one line, or of one label.
class Explanation {
public:
    Explanation(const PreparedProgram& program, const Assembly& failed) : program_(program), failed_(failed) {}

    Text Find() const {
        if (failed_.FaultLine == 0) return {};
        if (IsBehindColonInComment()) return u"a colon in a comment breaks the line there: leave it out";
        constexpr View badLabel = u"Bad label - ";
        const View message = failed_.AsmErrorText;
        if (HasNoBreakSpace(message) || std::ranges::any_of(failed_.FaultWords, HasNoBreakSpace))
            return u"there is a no-break space in this line: put a blank in its place";
        if (message.starts_with(badLabel)) return OfLabel(message.substr(badLabel.size()));
        if (std::ranges::any_of(failed_.FaultWords, [](View word) { return word.find(u';') != word.npos; }))
            return stickingComment;
        const View mnemonic = failed_.FaultWords[0];
        if (mnemonic.ends_with(u':')) return fullTable;
        const InstructionRow* row = FindInstruction(mnemonic);
        return row == nullptr ? OfMnemonic() : OfOperands(row);
    }

private:
    static constexpr const char16_t* stickingComment = u"a comment needs a blank before its \";\"";
    static constexpr const char16_t* strayComma = u"a comma stands between two operands and nowhere else";
    static constexpr const char16_t* fullTable = u"all 101 places that there are for labels, jumps and calls are taken";

    bool IsBehindColonInComment() const {
        const int line = failed_.FaultLine;
        for (int before = line - 1; before > 0 && program_.SourceLine(before) == program_.SourceLine(line); --before)
            if (LineOf(program_.Text, before).find(u';') != View::npos) return true;
        return false;
    }

    bool IsJumpedTo(View label) const {
        return std::ranges::any_of(WordsOfLines(program_.Text), [label](const std::vector<Text>& words) {
            if (words.size() < 2 || words[1] != label) return false;
            const InstructionRow* row = FindInstruction(words[0]);
            return row != nullptr && row->TakesLabel();
        });
    }

    bool IsDefined(View label) const {
        return std::ranges::any_of(WordsOfLines(program_.Text), [label](const std::vector<Text>& words) {
            return !words.empty() && words[0] == Text(label) + u':';
        });
    }

    Text OfMnemonic() const {
        const auto& [word, second, third] = failed_.FaultWords;
        const Text quoted = Shortened(word);
        const bool isBeforeMnemonic = IsMnemonic(second);
        if (word.find(u',') != Text::npos) {
            const View mnemonic = MnemonicInFront(word);
            return mnemonic.empty() ? strayComma : u"a blank belongs behind " + Text(mnemonic);
        }
        for (const View directive : {View(word), View(second)}) {
            const bool isLabel = isBeforeMnemonic && !directive.starts_with(u'#') && !directive.starts_with(u'.');
            if (Text note = OfDirective(directive); !note.empty() && !isLabel) return note;
        }
        if (Contains(interruptMnemonics, word)) return u"this machine has no interrupts, and so no " + quoted;
        if (second == u":") return u"no blank belongs between a label and its colon";
        if (word[0] < 0x80 && m8085::ToUpperCase(word[0]) == m8085::ToLowerCase(word[0]) &&
            m8085::HexDigitValue(word[0]) < 0 && word[0] != u'_')
            return u"a line begins with a label or a mnemonic; a comment begins with \";\"";
        if (isBeforeMnemonic && LooksLikeAddress(word)) return u"no address belongs in front of an instruction";

        Text asLabel = u"if " + quoted + u" is a label, it needs a colon: " + quoted + u":";
        if (IsJumpedTo(word) || isBeforeMnemonic) return asLabel;
        const std::vector<Text> meant = MnemonicsLike(word);
        if (!meant.empty()) return u"there is no " + quoted + u"; is " + Choice(meant) + u" meant?";
        if (second.empty()) return asLabel;
        return u"there is no mnemonic " + quoted + u"; a label needs a colon, a comment a \";\" in front";
    }

    static Text OfDirective(View word) {
        if (word.starts_with(u'#') || word.starts_with(u'.')) word.remove_prefix(1);
        if (!Contains(directives, word)) return {};
        const Text none = Text(word) + u" is a directive, and there are none here: ";
        if (word == u"ORG" || word == u"BEGIN") return none + u"a program always begins at 8000";
        if (word == u"END") return none + u"leave it out";
        if (word == u"EQU" || word == u"SET") return none + u"write the number itself";
        return none + u"put data into memory by instructions or by a data file";
    }

    Text OfOperands(const InstructionRow* row) const {
        const View mnemonic = failed_.FaultWords[0];
        for (const std::size_t column : {std::size_t{0}, std::size_t{1}}) {
            const View word = failed_.FaultWords[column + 1];
            const std::string_view takes = row->Operands[column];
            if (row->TakesLabel()) return fullTable;
            if (takes == "I8" || takes == "I16") return OfNumber(mnemonic, word, takes == "I8");
            row =
                column == 0 ? FindInstruction(mnemonic, word) : FindInstruction(mnemonic, failed_.FaultWords[1], word);
            if (word.empty() || row == nullptr) return OfRegister(mnemonic, word, column);
        }
        return {};
    }

    Text OfRegister(View mnemonic, View word, std::size_t column) const {
        if (word.find(u',') != View::npos) return strayComma;
        if (ReadNumber(word) && !Contains(registerNames, word))
            for (const auto& [withRegister, withNumber] : twins)
                if (mnemonic == withRegister && (mnemonic != u"MOV" || column == 1))
                    return Text(mnemonic) + u" takes a register here; " + Text(withNumber) + u" takes a number";

        std::vector<Text> choices;
        for (const InstructionRow& row : InstructionRows()) {
            if (Wide(row.Mnemonic) != mnemonic) continue;
            const std::string_view operand = row.Operands[column];
            const bool isPair = operand.size() == 2 && operand != "SP";
            if (column == 0 || Wide(row.Operands[0]).front() == failed_.FaultWords[1].front())
                AppendOnce(choices, Wide(isPair ? operand.substr(0, 1) : operand));
        }
        std::ranges::sort(choices, {}, [](View name) { return std::ranges::find(registerNames, name); });
        const Text takes =
            Text(mnemonic) + u" takes " + Choice(choices) + (column == 1 ? u" as its second operand" : u"");
        return takes + (word.empty() ? u", which is missing" : u", not " + Shortened(word));
    }

    Text OfNumber(View mnemonic, View word, bool isByte) const {
        const Text quoted = Shortened(word);
        if (word.empty()) return u"the number that " + Text(mnemonic) + u" takes is missing";
        if (word.find(u',') != View::npos) return strayComma;
        if (word.ends_with(u':')) return u"a colon belongs behind a label only, first on its line";
        if (Contains(registerNames, word)) {
            for (const auto& [withRegister, withNumber] : twins)
                if (mnemonic == withNumber)
                    return Text(mnemonic) + u" takes a number; " + Text(withRegister) + u" takes a register";
            return Text(mnemonic) + u" takes a number here, not a register";
        }
        if (IsDefined(word)) return u"a label is no number: write the address that it stands for";
        if (ReadNumber(word)) return OfTooLarge(word, isByte);
        Text withZeros(word);
        std::ranges::replace(withZeros, u'O', u'0');
        if (ReadNumber(withZeros)) return u"there is a letter O in " + quoted + u" where a 0 belongs";
        return quoted + u" is no number: those are hexadecimal digits and nothing else, but for a final H";
    }

    static Text OfTooLarge(View word, bool isByte) {
        const std::int32_t largest = isByte ? 0xFF : 0xFFFF;
        const auto inHexadecimal = [&](const char16_t* base, View digits, std::int32_t value) {
            return u"all numbers are hexadecimal: " + Text(base) + Text(digits) + u" is " +
                   Wide(isByte ? m8085::FormatHexByte(static_cast<std::uint8_t>(value)) : m8085::FormatHexLong(value));
        };
        if (const auto value = ReadDigits(word, 10, largest)) return inHexadecimal(u"decimal ", word, *value);
        if (word.ends_with(u'D'))
            if (const auto value = ReadDigits(WithoutLast(word), 10, largest))
                return inHexadecimal(u"decimal ", WithoutLast(word), *value);
        if (word.ends_with(u'B'))
            if (const auto value = ReadDigits(WithoutLast(word), 2, largest))
                return inHexadecimal(u"binary ", WithoutLast(word), *value);
        return Shortened(word) + (isByte ? u" is too large for a byte: the largest is FF"
                                         : u" is too large for 16 bits: the largest number is FFFF");
    }

    Text OfLabel(View name) const {
        const Text quoted = Shortened(name);
        if (name.find(u';') != View::npos) return stickingComment;
        if (name.empty()) return u"a jump or call needs a label to go to";
        if (name.ends_with(u':')) return u"no colon belongs behind the label of a jump or call";
        const LabelTable& labels = failed_.Labels;
        constexpr int last = LabelTable::NotFound;
        if (labels.LabelCount() > last && labels[last].Kind == LabelKind::Definition && labels[last].Name == name)
            return quoted + u" has the last of the 101 places for labels and jumps, where it cannot be found";
        if (LooksLikeAddress(name)) return u"a jump or call goes to a label, not to an address: put a label there";
        std::vector<Text> meant;
        for (int slot = 0; slot < labels.LabelCount(); ++slot) {
            const auto& [label, address, kind, line] = labels[slot];
            if (kind == LabelKind::Definition && !label.empty() && IsOneLetterOff(name, label))
                AppendOnce(meant, label);
        }
        if (!meant.empty()) return u"there is no label " + quoted + u"; is " + Choice(meant) + u" meant?";
        return u"no line defines it: put " + quoted + u": where it is to go";
    }

    const PreparedProgram& program_;
    const Assembly& failed_;
};

}  // namespace

std::u16string ExplainFailure(const PreparedProgram& program, const Assembly& failed) {
    return Explanation(program, failed).Find();
}

}  // namespace assembler
