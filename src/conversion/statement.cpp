#include "conversion/statement.h"

#include <algorithm>
#include <span>
#include <utility>

#include "assembler/disassembly.h"
#include "conversion/expression.h"
#include "machine/number_format.h"
#include "machine/text.h"

namespace conversion {

namespace {

using m8085::UpperCase;

// Those with a dot are words of English without it.
constexpr std::pair<View, Kind> operations[] = {
    {u"ORG", Kind::Origin},    {u"BEGIN", Kind::Begin},    {u"END", Kind::End},       {u"CPU", Kind::Heading},
    {u"HOF", Kind::Heading},   {u"TITLE", Kind::Heading},  {u"SBTTL", Kind::Heading}, {u"PAGE", Kind::Heading},
    {u"EJECT", Kind::Heading}, {u"NAME", Kind::Heading},   {u"ASEG", Kind::Heading},  {u"CSEG", Kind::Heading},
    {u"DSEG", Kind::Heading},  {u"PUBLIC", Kind::Heading}, {u".ASCII", Kind::Bytes},  {u"DB", Kind::Bytes},
    {u"DEFB", Kind::Bytes},    {u".BYTE", Kind::Bytes},    {u"DW", Kind::Words},      {u"DEFW", Kind::Words},
    {u".WORD", Kind::Words},   {u"DS", Kind::Space},       {u"DEFS", Kind::Space},    {u"EQU", Kind::Equal},
    {u"SET", Kind::Equal},     {u"=", Kind::Equal},        {u"RST", Kind::Interrupt}, {u"EI", Kind::Interrupt},
    {u"DI", Kind::Interrupt},  {u"RIM", Kind::Interrupt},  {u"SIM", Kind::Interrupt}};

bool IsMarked(View word) {
    return word.starts_with(u'.') || word.starts_with(u'#');
}

// Takes upper case. Only directives may be marked.
Kind KindOf(View word) {
    if (assembler::IsMnemonic(word)) return Kind::Instruction;
    const auto* found = std::ranges::find(operations, word, &std::pair<View, Kind>::first);
    if (found == std::end(operations) && IsMarked(word))
        found = std::ranges::find(operations, word.substr(1), &std::pair<View, Kind>::first);
    const bool isMeant = found != std::end(operations) && !(IsMarked(word) && found->second == Kind::Interrupt);
    return isMeant ? found->second : Kind::Unknown;
}

// Other assemblers know them, and nothing takes their place here.
constexpr View unknownDirectives[] = {u"MACRO", u"INCLUDE", u"RADIX", u"EXTRN", u"EXTERN"};

// Those of C, which come with a "#" and may change the program.
constexpr View preprocessor[] = {u"#DEFINE", u"#INCLUDE", u"#IF", u"#IFDEF", u"#IFNDEF", u"#ELSE", u"#ENDIF"};

// What the head of a program says of it, with a colon.
constexpr View headWords[] = {u"NAME", u"AUTHOR", u"STUDENT", u"SUBJECT", u"COURSE", u"CLASS",  u"TITLE", u"PROGRAM",
                              u"DATE", u"AIM",    u"OBJECT",  u"TASK",    u"INPUT",  u"OUTPUT", u"RESULT"};

bool IsNumberColumn(std::string_view column) {
    return column.starts_with('I');
}

class Reader {
public:
    explicit Reader(View code) : code_(code) {}

    Statement Read() {
        ReadLabels();
        SkipBlanks();
        ReadOperation();
        if (statement_.What == Kind::Instruction)
            ReadOperands();
        else if (statement_.What != Kind::Unknown && statement_.What != Kind::Heading)
            ReadList();
        if (statement_.What == Kind::Equal) TakeNameFromList();
        if (at_ < code_.size() && statement_.What != Kind::Nothing) statement_.RestAt = at_;
        if (IsEnglish()) statement_.What = Kind::Unknown;
        return std::move(statement_);
    }

private:
    // "Begin with", "end of program".
    bool IsEnglish() const {
        const auto& operands = statement_.Operands;
        if (statement_.What == Kind::End) return operands.size() > 1 || statement_.RestAt;
        if (statement_.What != Kind::Begin) return false;
        return operands.empty() || !ReadNumber(operands[0].Text);
    }

    void SkipBlanks() {
        while (at_ < code_.size() && m8085::IsBlank(code_[at_])) ++at_;
    }

    bool IsAt(View characters) const { return at_ < code_.size() && characters.find(code_[at_]) != View::npos; }

    // From here up to a blank, the line's end or one of the characters.
    View WordHere(View ends) const {
        std::size_t end = at_;
        while (end < code_.size() && !m8085::IsBlank(code_[end]) && ends.find(code_[end]) == View::npos) ++end;
        return code_.substr(at_, end - at_);
    }

    // With a colon, or with blanks and a colon after it.
    bool ReadLabel() {
        SkipBlanks();
        const std::size_t start = at_;
        const View word = WordHere(u":=,");
        at_ += word.size();
        if (!IsAt(u":") && KindOf(UpperCase(word)) == Kind::Unknown) SkipBlanks();
        const bool isLabel = IsAt(u":") && !word.empty() && !m8085::IsQuote(word[0]);
        if (!isLabel) {
            at_ = start;
            return false;
        }
        statement_.Labels.push_back({UpperCase(word), start, at_++});
        return true;
    }

    void ReadLabels() {
        while (ReadLabel()) {
        }
    }

    void ReadOperation() {
        if (at_ >= code_.size()) return;
        TakeOperation();
        const bool isHeading = statement_.What == Kind::Heading;
        if (statement_.IsInstruction() || !IsName(statement_.Operation)) return;
        // A name without a colon before an operation. It may be that of a directive where no label stands before it. An
        // address may have labels after it.
        if (statement_.What != Kind::Unknown && !statement_.Labels.empty()) return;
        Statement first = statement_;
        const std::size_t afterFirst = at_;
        const bool isAddress = m8085::IsDecimalDigit(first.Operation[0]);
        if (isAddress) ReadLabels();
        TakeOperation();
        const bool mayFollow = (statement_.IsInstruction() || statement_.IsOrigin()) && !isHeading;
        const bool isEnd = statement_.What == Kind::End && isAddress;
        const bool isFirstOther = first.IsOrigin() || first.What == Kind::End;
        if (statement_.DefinesNames() || isEnd || (mayFollow && !isFirstOther)) {
            const auto place = statement_.Labels.begin() + static_cast<std::ptrdiff_t>(first.Labels.size());
            statement_.Labels.insert(place, {first.Operation, first.At, {}});
            return;
        }
        statement_ = std::move(first);
        at_ = afterFirst;
    }

    // Moves on to the operands. A mark may stand alone.
    void TakeOperation() {
        statement_.At = at_;
        Text word;
        if (IsAt(u"=") || IsAt(u"#")) word = code_[at_++];
        if (word == u"#") SkipBlanks();
        if (word != u"=") word += WordHere(u"=");
        at_ += word.size() - (word.starts_with(u'=') || word.starts_with(u'#') ? 1 : 0);
        statement_.Operation = UpperCase(word);
        statement_.What = KindOf(statement_.Operation);
        statement_.Row = assembler::FindInstruction(statement_.Operation);
        SkipBlanks();
    }

    void ReadOperands() {
        for (const std::string_view column : statement_.Row->Operands) {
            if (column.empty() || at_ >= code_.size()) break;
            const std::size_t start = at_;
            if (IsNumberColumn(column))
                at_ += LengthOfExpression(code_.substr(at_));
            else
                at_ += WordHere(u",").size();
            TakeOperand(start);
            const bool isFirst = statement_.Operands.size() == 1 && !statement_.Row->Operands[1].empty();
            while (isFirst && IsAt(u", \t")) ++at_;
        }
    }

    void ReadList() {
        while (at_ < code_.size()) {
            const std::size_t start = at_;
            const std::size_t closing = m8085::IsQuote(code_[at_]) ? code_.find(code_[at_], at_ + 1) : View::npos;
            if (closing != View::npos && closing > at_ + 2)
                at_ = closing + 1;
            else
                at_ += LengthOfExpression(code_.substr(at_));
            TakeOperand(start);
            if (!IsAt(u",")) return;
            ++at_;
            SkipBlanks();
        }
    }

    // "EQU NAME, 5".
    void TakeNameFromList() {
        std::vector<Operand>& operands = statement_.Operands;
        if (!statement_.Labels.empty() || operands.size() != 2 || !IsName(operands[0].Text)) return;
        statement_.Labels.push_back({UpperCase(operands[0].Text), operands[0].At, {}});
        operands.erase(operands.begin());
    }

    void TakeOperand(std::size_t start) {
        if (at_ > start) statement_.Operands.push_back({start, Text(m8085::Trimmed(code_.substr(start, at_ - start)))});
        SkipBlanks();
    }

    View code_;
    std::size_t at_ = 0;
    Statement statement_;
};

// Splits at blanks.
std::vector<View> WordsOf(View code) {
    std::vector<View> words;
    while (!(code = m8085::Trimmed(code)).empty()) {
        words.push_back(code.substr(0, code.find_first_of(u" \t")));
        code.remove_prefix(words.back().size());
    }
    return words;
}

// Without what may end it in a sentence.
View LettersOf(View word) {
    return word.substr(0, word.find_last_not_of(u",.:") + 1);
}

// Written like "Add".
bool IsCapitalized(View word) {
    return word.size() > 1 && word[0] <= u'Z' && word[1] > u'Z';
}

// Whether the words may be an instruction with a slip in it: "LDAXX B", "RETURN", "STORE 9000H" or "CLEAR A", but
// neither "Program A" nor "Experiment 12".
bool HasSlip(const std::vector<View>& words) {
    const Text first = UpperCase(words[0]);
    if (assembler::IsMnemonic(first.substr(0, 4)) || (words.size() == 1 && first.starts_with(u"RET"))) return true;
    if (words.size() != 2) return false;
    const Text operand = UpperCase(words[1]);
    const bool isOfTitle = operand.size() < 4 && m8085::IsDecimalDigit(operand.back());
    const bool isNumber = m8085::IsDecimalDigit(operand[0]) && ReadNumber(operand) && !isOfTitle;
    return isNumber || (assembler::IsRegister(operand) && !IsCapitalized(words[0]));
}

bool IsUnknownDirective(View word) {
    const bool isMarked = word.size() > 1 && word[0] == u'.' && IsWord(word.substr(1, 1));
    const Text upper = UpperCase(LettersOf(word));
    return isMarked || m8085::Contains(unknownDirectives, upper) || m8085::Contains(preprocessor, upper);
}

// Whether the text cannot be English for a directive or an instruction in it. The latter has two operands, or comes
// after what is not a word, such as an address, and is not capitalized.
bool IsForAssembler(View text) {
    constexpr std::size_t enough = 20;  // of the words; a line can have very many
    std::vector<View> words = WordsOf(text);
    words.resize(std::min(words.size(), enough));
    const auto isInstruction = [&](View word) {
        const Statement statement = ReadStatement(text.substr(static_cast<std::size_t>(word.data() - text.data())));
        if (!statement.IsWholeInstruction()) return false;
        const bool takesNumber = IsNumberColumn(statement.Row->Operands[0]);
        const bool isClear = !takesNumber || m8085::IsDecimalDigit(statement.Operands[0].Text[0]);
        return statement.Operands.size() > 1 || (!IsWord(LettersOf(words[0])) && !IsCapitalized(word) && isClear);
    };
    const auto second = words.begin() + 1;
    return IsUnknownDirective(words[0]) || (second != words.end() && IsUnknownDirective(*second)) ||
           std::any_of(second, words.end(), isInstruction);
}

// Also of an interrupt instruction of the chip.
std::optional<std::uint8_t> OpcodeOf(const Statement& statement) {
    if (const assembler::InstructionRow* row = statement.WholeInstruction()) return row->Opcode;
    if (statement.What != Kind::Interrupt) return {};
    constexpr std::pair<View, std::uint8_t> others[] = {{u"EI", 0xFB}, {u"DI", 0xF3}, {u"RIM", 0x20}, {u"SIM", 0x30}};
    for (const auto& [name, opcode] : others)
        if (statement.Operation == name) return opcode;
    const auto number =
        statement.Operands.size() == 1 ? m8085::ReadHexNumber(statement.Operands[0].Text, 7) : std::nullopt;
    return number ? std::optional(static_cast<std::uint8_t>(0xC7 + 8 * *number)) : std::nullopt;
}

}  // namespace

std::u16string Statement::Target() const {
    if (Row == nullptr || !Row->TakesLabel() || Operands.empty()) return {};
    const View text = Operands[0].Text;
    return UpperCase(text.ends_with(u':') ? text.substr(0, text.size() - 1) : text);
}

const assembler::InstructionRow* Statement::WholeInstruction() const {
    if (Row == nullptr) return nullptr;
    const auto count = static_cast<std::size_t>(
        std::ranges::count_if(Row->Operands, [](std::string_view column) { return !column.empty(); }));
    if (Operands.size() < count) return nullptr;
    View registers[2];
    for (std::size_t place = 0; place < count; ++place)
        if (!IsNumberColumn(Row->Operands[place])) registers[place] = Operands[place].Text;
    return assembler::FindInstruction(Operation, UpperCase(registers[0]), UpperCase(registers[1]));
}

Statement ReadStatement(View code) {
    return Reader(code).Read();
}

std::optional<Listing> ReadListing(View text) {
    constexpr std::size_t addressDigits = 4;
    constexpr std::size_t mostDigits = 6;  // of the bytes
    const std::vector<View> words = WordsOf(text);
    if (words.size() < 2) return {};
    const View address = words[0].substr(0, words[0].find_last_not_of(u"hH:") + 1);
    Text bytes;
    for (const View word : std::span(words).subspan(1)) bytes += word;
    std::erase(bytes, u',');
    const auto isHex = [](View digits) { return m8085::ReadHexNumber(digits, 0xFFFFFF).has_value(); };
    const bool isRight = address.size() == addressDigits && bytes.size() <= mostDigits && bytes.size() % 2 == 0;
    if (!isRight || !isHex(address) || !isHex(bytes)) return {};
    return Listing{*m8085::ReadHexNumber(address, 0xFFFF), *m8085::ReadHexNumber(View(bytes).substr(0, 2), 0xFF),
                   static_cast<int>(bytes.size()) / 2};
}

std::optional<std::int32_t> ReadListing(View text, const Statement& statement) {
    const auto listing = ReadListing(text);
    const auto opcode = OpcodeOf(statement);
    const bool fits =
        listing && opcode && listing->FirstByte == *opcode && listing->Size <= assembler::InstructionLength(*opcode);
    return fits ? std::optional(listing->Address) : std::nullopt;
}

std::optional<std::size_t> FindAfterListing(View code) {
    constexpr std::size_t mostColumns = 4;
    const std::vector<View> words = WordsOf(code);
    for (std::size_t place = std::min(words.size(), mostColumns + 1); place-- > 2;) {
        const auto after = static_cast<std::size_t>(words[place].data() - code.data());
        if (ReadListing(code.substr(0, after), ReadStatement(code.substr(after)))) return after;
    }
    return {};
}

bool IsWord(View word) {
    const auto isLetter = [](char16_t character) {
        const char16_t upper = m8085::ToUpperCase(character);
        return (upper >= u'A' && upper <= u'Z') || upper >= 0x80;
    };
    return !word.empty() && std::ranges::all_of(word, isLetter);
}

bool IsName(View word) {
    static constexpr View others = u"_.$?@0123456789";
    return !word.empty() && std::ranges::all_of(word, [](char16_t character) {
        return IsWord(View(&character, 1)) || others.find(character) != View::npos;
    });
}

bool MayBeInstruction(View text, View mnemonic) {
    const Statement statement = ReadStatement(text);
    if (!statement.IsWholeInstruction()) return false;
    const auto isSmall = [](char16_t letter) { return letter != m8085::ToUpperCase(letter); };
    const bool isSameStyle =
        std::ranges::equal(text.substr(statement.At, 2), mnemonic.substr(0, 2), {}, isSmall, isSmall);
    const bool isSentence = statement.RestAt && IsWord(text.substr(*statement.RestAt, 1));
    return isSameStyle || !isSentence;
}

bool IsFormerPlacement(View comment) {
    return std::ranges::any_of(m8085::PartsOf(comment, u';'), [](View part) {
        const Statement statement = ReadStatement(part);
        return (statement.IsData() || statement.IsOrigin()) && !statement.Operands.empty() && !statement.RestAt;
    });
}

bool IsProse(const Statement& statement, View code) {
    constexpr std::size_t tooLongForMnemonic = 5;
    const bool hasOpenLabel = !statement.Labels.empty() && !statement.Labels.back().ColonAt;
    const std::size_t labelAt = statement.Labels.empty() ? statement.At : statement.Labels.back().At;
    const std::vector<View> words = WordsOf(code.substr(hasOpenLabel ? labelAt : statement.At));
    if (statement.IsWholeInstruction() || words.empty() || IsForAssembler(code.substr(labelAt))) return false;
    const auto isLetter = [](View word) { return IsWord(word.substr(0, 1)); };
    const auto isSign = [=](View word) { return !isLetter(word) && m8085::HexDigitValue(word[0]) < 0; };
    const bool isTitle = words.size() == 2 && words[1].size() >= tooLongForMnemonic - 1 && IsWord(words[1]);
    const bool isSubject = !statement.Labels.empty() || isTitle || (words.size() > 1 && isSign(words[1]));
    const bool isOfHead = !statement.Labels.empty() && m8085::Contains(headWords, statement.Labels[0].Name);
    if (words[0][0] == u'"' || (statement.What == Kind::Unknown && isOfHead)) return true;
    if (!isLetter(statement.Operation) && isSubject) return true;  // "Date: 1 May", "1. Start", "9000 - the result"
    if (words.size() > 2) {
        const auto isEnglish = [](View word) {
            const Text letters = UpperCase(LettersOf(word));
            return IsWord(letters) && letters.size() > 1 && !assembler::IsRegister(letters);
        };
        const bool isAfterColon = !statement.Labels.empty() && !hasOpenLabel;
        const bool takesRegister = statement.Row != nullptr && !IsNumberColumn(statement.Row->Operands[0]);
        const bool mayBeEnglish = hasOpenLabel || statement.What == Kind::Unknown || takesRegister;
        if (mayBeEnglish && isEnglish(words[1]) && (!isAfterColon || isEnglish(words[0]))) return true;
    }
    const bool hasOperands = std::ranges::any_of(words, [](View word) { return word.find(u',') - 1 < 2; });
    const bool isLong = statement.What == Kind::Unknown && IsWord(words[0]) && words[0].size() >= tooLongForMnemonic;
    return isLong && !hasOperands && !HasSlip(words);
}

}  // namespace conversion
