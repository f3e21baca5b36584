#include "assembler/assembler.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "assembler/instruction_table.h"
#include "machine/bytes.h"
#include "machine/number_format.h"
#include "machine/text.h"

namespace assembler {

namespace {

// One assembly in progress.
class Translation {
public:
    Translation(std::u16string_view text, m8085::MachineState& machine, m8085::CodeMap& codeMap, std::int32_t origin)
        : text_(text), machine_(machine), codeMap_(codeMap), LocationCounter(origin) {
        result_.Origin = origin;
    }

    Assembly Run() {
        const bool scanned = Scan();
        if (!scanned) result_.FaultLine = LineCounter;
        result_.End = LocationCounter;
        result_.Succeeded = scanned && ResolveLabels();
        if (result_.Succeeded) machine_.Halted = false;
        return std::move(result_);
    }

private:
    // Between words, and inside one; by the number of the word.
    enum class State { BeforeFirst, InFirst, BeforeSecond, InSecond, BeforeThird, InThird };

    bool Scan();
    void TakeCharacter(std::size_t position);
    void OpenWord(std::size_t position, State inWord);
    void CloseWord(std::size_t end, State next);

    bool ProcessLine();
    bool DefineLabel();
    bool TranslateInstruction();
    bool TranslateOperand(std::size_t place, std::u16string_view word);
    bool EmitByte(std::u16string_view word);
    bool EmitWord(std::u16string_view word);
    bool EmitReference();
    bool ResolveLabels();

    bool Write(std::int32_t address, std::int32_t value);

    bool Fail(std::u16string reason, int line);
    bool FailGenerally() { return Fail(std::u16string(GeneralFailure), codeMap_.LineAt(LocationCounter - 1)); }

    std::u16string_view text_;
    m8085::MachineState& machine_;
    m8085::CodeMap& codeMap_;
    Assembly result_;

    std::int32_t LocationCounter;
    std::int16_t LineCounter = 0;
    State state_ = State::BeforeFirst;
    std::size_t wordStart_ = 0;
    std::u16string_view W1;                // mnemonic or label
    std::u16string_view W2;                // first operand
    std::u16string_view W3;                // second operand
    const InstructionRow* row_ = nullptr;  // of the words translated so far
};

bool Translation::Scan() {
    if (text_.size() > LongestPreparedText) return FailGenerally();
    for (std::size_t position = 0; position < text_.size(); ++position) {
        if (text_[position] == u';') {
            position = text_.find(u'\n', position);
            if (position == std::u16string_view::npos) return true;
        }
        if (text_[position] != u'\n') {
            TakeCharacter(position);
            continue;
        }
        CloseWord(position, State::BeforeFirst);
        ++LineCounter;
        if (!ProcessLine()) return false;
    }
    return true;
}

// The comma separates the second word from the third; everywhere else it is a character of its word. After the third
// word the next one takes the place of the first.
void Translation::TakeCharacter(std::size_t position) {
    const bool blank = m8085::IsBlank(text_[position]);
    const bool comma = text_[position] == u',';
    switch (state_) {
        case State::BeforeFirst:
            if (!blank) OpenWord(position, State::InFirst);
            break;
        case State::InFirst:
            if (blank) CloseWord(position, State::BeforeSecond);
            break;
        case State::BeforeSecond:
            if (!blank) OpenWord(position, State::InSecond);
            break;
        case State::InSecond:
            if (blank || comma) CloseWord(position, State::BeforeThird);
            break;
        case State::BeforeThird:
            if (!blank && !comma) OpenWord(position, State::InThird);
            break;
        case State::InThird:
            if (blank) CloseWord(position, State::BeforeFirst);
            break;
    }
}

void Translation::OpenWord(std::size_t position, State inWord) {
    wordStart_ = position;
    state_ = inWord;
}

// Stores the open word, if one is open, and changes to the state given.
void Translation::CloseWord(std::size_t end, State next) {
    const std::u16string_view word = text_.substr(wordStart_, end - wordStart_);
    if (state_ == State::InFirst) W1 = word;
    if (state_ == State::InSecond) W2 = word;
    if (state_ == State::InThird) W3 = word;
    state_ = next;
}

bool Translation::ProcessLine() {
    if (W1.empty()) return true;
    const bool good = W1.ends_with(u':') ? DefineLabel() : TranslateInstruction();
    if (good) W1 = W2 = W3 = {};
    return good;
}

bool Translation::DefineLabel() {
    const std::u16string_view name = W1.substr(0, W1.size() - 1);
    return result_.Labels.Append({std::u16string(name), LocationCounter, LabelKind::Definition, LineCounter}) ||
           FailGenerally();
}

bool Translation::TranslateInstruction() {
    constexpr std::size_t longestSearchableWord = 5;
    codeMap_.SetLine(LocationCounter, LineCounter);
    if (W1.size() > longestSearchableWord) return FailGenerally();
    row_ = FindInstruction(W1);
    if (row_ == nullptr) return Fail(u"Bad opcode - " + std::u16string(W1), codeMap_.LineAt(LocationCounter));
    if (!Write(LocationCounter, row_->Opcode)) return FailGenerally();
    result_.Instructions.push_back(LocationCounter++);
    return TranslateOperand(0, W2) && TranslateOperand(1, W3);
}

// A register operand selects the row, and so the opcode.
bool Translation::TranslateOperand(std::size_t place, std::u16string_view word) {
    const std::string_view column = row_->Operands[place];
    if (column.empty()) return true;
    if (column == "I8") return EmitByte(word);
    if (column == "I16") return row_->TakesLabel() ? EmitReference() : EmitWord(word);
    row_ = word.empty() ? nullptr : FindInstruction(W1, W2, place == 0 ? std::u16string_view() : W3);
    if (row_ == nullptr) return Fail(u"Bad operand - " + std::u16string(word), codeMap_.LineAt(LocationCounter - 1));
    return Write(LocationCounter - 1, row_->Opcode);
}

bool Translation::EmitByte(std::u16string_view word) {
    const auto value = ReadNumber(word);
    if (!value || *value > 0xFF || !Write(LocationCounter, *value)) return FailGenerally();
    ++LocationCounter;
    return true;
}

// The low byte, that of the last two digits, is written before the size of the number is checked.
bool Translation::EmitWord(std::u16string_view word) {
    const auto value = ReadNumber(word);
    const std::u16string_view digits = WithoutFinalH(word);
    const auto lowByte = ReadNumber(digits.substr(digits.size() - std::min<std::size_t>(digits.size(), 2)));
    if (!value || !Write(LocationCounter, *lowByte) || *value > 0xFFFF || !Write(LocationCounter + 1, *value >> 8))
        return FailGenerally();
    LocationCounter += 2;
    return true;
}

// Leaves room for the target, which is written when all labels are known.
bool Translation::EmitReference() {
    if (!result_.Labels.Append({std::u16string(W2), LocationCounter, LabelKind::Reference, LineCounter}))
        return FailGenerally();
    LocationCounter += 2;
    return true;
}

bool Translation::ResolveLabels() {
    for (int slot = 0; slot < result_.Labels.LabelCount(); ++slot) {
        const LabelEntry& reference = result_.Labels[slot];
        if (reference.Kind != LabelKind::Reference) continue;
        const int definition = result_.Labels.FindLabel(reference, LabelKind::Definition);
        if (definition == LabelTable::NotFound) {
            result_.FaultLine = reference.Line;
            return Fail(u"Bad label - " + reference.Name, reference.Line);
        }
        const std::int32_t target = result_.Labels[definition].Address;
        if (!Write(reference.Address, target) || !Write(reference.Address + 1, target >> 8)) return FailGenerally();
    }
    return true;
}

// Stores the low byte of the value. False beyond the end of memory, which no text of legal length reaches from 8000.
bool Translation::Write(std::int32_t address, std::int32_t value) {
    if (address >= m8085::MemorySize) {
        result_.PassesEndOfMemory = true;
        return false;
    }
    machine_.Memory[m8085::Index(address)] = m8085::Low(value);
    return true;
}

bool Translation::Fail(std::u16string reason, int line) {
    result_.AsmErrorText = std::move(reason);
    result_.AsmErrorLine = line;
    return false;
}

}  // namespace

std::u16string_view WithoutFinalH(std::u16string_view word) {
    if (word.ends_with(u'H')) word.remove_suffix(1);
    return word;
}

std::optional<std::int32_t> ReadNumber(std::u16string_view word) {
    return m8085::ReadHexNumber(WithoutFinalH(word), 0xFFFF);
}

Assembly AssembleProgram(std::u16string text, m8085::MachineState& machine, m8085::CodeMap& codeMap,
                         std::int32_t origin) {
    text = m8085::UpperCase(text);
    return Translation(text, machine, codeMap, origin).Run();
}

}  // namespace assembler
