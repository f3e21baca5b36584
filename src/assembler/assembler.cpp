#include "assembler/assembler.h"

#include <optional>
#include <string_view>
#include <utility>

#include "assembler/instruction_table.h"
#include "machine/number_format.h"

namespace assembler {

namespace {

bool IsBlank(char16_t character) {
    return character == u' ' || character == u'\t';
}

// Only a to z: a label may hold other letters, and they stay as they are.
void FoldToUpperCase(std::u16string& text) {
    for (char16_t& character : text)
        if (character >= u'a' && character <= u'z') character = static_cast<char16_t>(character - u'a' + u'A');
}

std::u16string_view WithoutFinalH(std::u16string_view word) {
    if (word.ends_with(u'H')) word.remove_suffix(1);
    return word;
}

// The number's value, or as much of it as tells that it is above FFFF together with its true low byte. Nothing for a
// text that is no hexadecimal number.
std::optional<std::uint32_t> ReadHex(std::u16string_view digits) {
    if (digits.empty()) return std::nullopt;
    std::uint32_t value = 0;
    for (const char16_t character : digits) {
        const int digit = m8085::HexDigitValue(character);
        if (digit < 0) return std::nullopt;
        const std::uint32_t tooLarge = value > 0xFFFF ? 0x10000 : 0;
        value = (value & 0xFFFF) << 4 | static_cast<std::uint32_t>(digit) | tooLarge;
    }
    return value;
}

// One assembly in progress.
class Translation {
public:
    Translation(std::u16string_view sourceText, m8085::MachineState& machineState, m8085::CodeMap& sourceLines)
        : text(sourceText), machine(machineState), codeMap(sourceLines) {}

    Assembly Run() {
        result.Succeeded = Scan() && ResolveLabels();
        if (result.Succeeded) machine.Halted = false;
        return std::move(result);
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
    bool SelectByFirstOperand(int& anchor);
    bool SelectBySecondOperand(int& anchor);
    bool TranslateFirstOperand(int& anchor);
    bool TranslateSecondOperand(int& anchor);
    bool EmitByte(std::u16string_view word);
    bool EmitWord(std::u16string_view word);
    bool EmitReference();
    bool ResolveLabels();

    bool Write(std::int32_t address, std::uint32_t value);
    void ReplaceOpcode(int anchor) { Write(LocationCounter - 1, OpcodeAt(anchor)); }

    bool Fail(std::u16string reason, int line);
    bool FailOnOperand(std::u16string_view operand);
    bool FailGenerally() { return Fail(u"Bad operand", codeMap.LineAt(LocationCounter - 1)); }

    std::u16string_view text;
    m8085::MachineState& machine;
    m8085::CodeMap& codeMap;
    Assembly result;

    std::int32_t LocationCounter = m8085::ProgramOrigin;
    std::int16_t LineCounter = 0;
    State state = State::BeforeFirst;
    std::size_t wordStart = 0;
    std::u16string_view W1;  // mnemonic or label
    std::u16string_view W2;  // first operand
    std::u16string_view W3;  // second operand
};

bool Translation::Scan() {
    if (text.size() > LongestPreparedText) return FailGenerally();
    for (std::size_t position = 0; position < text.size(); ++position) {
        if (text[position] == u';') {
            position = text.find(u'\n', position);
            if (position == std::u16string_view::npos) return true;
        }
        if (text[position] != u'\n') {
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
    const bool blank = IsBlank(text[position]);
    const bool comma = text[position] == u',';
    switch (state) {
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
    wordStart = position;
    state = inWord;
}

// Stores the open word, if one is open, and goes on in the state given.
void Translation::CloseWord(std::size_t end, State next) {
    const std::u16string_view word = text.substr(wordStart, end - wordStart);
    if (state == State::InFirst) W1 = word;
    if (state == State::InSecond) W2 = word;
    if (state == State::InThird) W3 = word;
    state = next;
}

bool Translation::ProcessLine() {
    if (W1.empty()) return true;
    const bool good = W1.ends_with(u':') ? DefineLabel() : TranslateInstruction();
    W1 = W2 = W3 = {};
    return good;
}

bool Translation::DefineLabel() {
    W1.remove_suffix(1);
    return result.Labels.Append({std::u16string(W1), LocationCounter, LabelKind::Definition, 0}) || FailGenerally();
}

bool Translation::TranslateInstruction() {
    codeMap.SetLine(LocationCounter, LineCounter);
    if (W1.size() > LongestSearchableWord) return FailGenerally();
    int anchor = FindInstruction(W1);
    if (anchor == NoAnchor) return Fail(u"Bad opcode - " + std::u16string(W1), codeMap.LineAt(LocationCounter));
    if (!Write(LocationCounter, OpcodeAt(anchor))) return FailGenerally();
    ++LocationCounter;
    return TranslateFirstOperand(anchor) && TranslateSecondOperand(anchor);
}

bool Translation::TranslateFirstOperand(int& anchor) {
    const std::string_view column = OperandAt(anchor, 1);
    if (column.empty()) return true;
    if (column == "I8") return EmitByte(W2);
    if (column != "I16") return SelectByFirstOperand(anchor);
    return TakesLabel(anchor) ? EmitReference() : EmitWord(W2);
}

bool Translation::TranslateSecondOperand(int& anchor) {
    const std::string_view column = OperandAt(anchor, 2);
    if (column.empty()) return true;
    if (column == "I8") return EmitByte(W3);
    if (column == "I16") return EmitWord(W3);
    return SelectBySecondOperand(anchor);
}

bool Translation::SelectByFirstOperand(int& anchor) {
    anchor = W2.empty() ? NoAnchor : FindInstruction(W1, W2);
    if (anchor == NoAnchor) return FailOnOperand(W2);
    ReplaceOpcode(anchor);
    return true;
}

bool Translation::SelectBySecondOperand(int& anchor) {
    anchor = W3.empty() ? NoAnchor : FindInstruction(W1, W2, W3);
    if (anchor == NoAnchor) return FailOnOperand(W3);
    ReplaceOpcode(anchor);
    return true;
}

bool Translation::EmitByte(std::u16string_view word) {
    const auto value = ReadHex(WithoutFinalH(word));
    if (!value || *value > 0xFF || !Write(LocationCounter, *value)) return FailGenerally();
    ++LocationCounter;
    return true;
}

// The low byte is written before the size of the number is looked at.
bool Translation::EmitWord(std::u16string_view word) {
    const auto value = ReadHex(WithoutFinalH(word));
    if (!value || !Write(LocationCounter, *value) || *value > 0xFFFF || !Write(LocationCounter + 1, *value >> 8))
        return FailGenerally();
    LocationCounter += 2;
    return true;
}

// Leaves room for the target, which is written when all labels are known.
bool Translation::EmitReference() {
    if (!result.Labels.Append({std::u16string(W2), LocationCounter, LabelKind::Reference, LineCounter}))
        return FailGenerally();
    LocationCounter += 2;
    return true;
}

bool Translation::ResolveLabels() {
    for (int slot = 0; slot < result.Labels.LabelCount(); ++slot) {
        const LabelEntry& reference = result.Labels[slot];
        if (reference.Kind != LabelKind::Reference) continue;
        const int definition = result.Labels.FindLabel(reference, LabelKind::Definition);
        if (definition == LabelTable::NotFound) return Fail(u"Bad label - " + reference.Name, reference.Line);
        const auto target = static_cast<std::uint32_t>(result.Labels[definition].Address);
        if (!Write(reference.Address, target) || !Write(reference.Address + 1, target >> 8)) return FailGenerally();
    }
    return true;
}

// Stores the low byte of the value. False beyond the end of memory, which no text of legal length reaches.
bool Translation::Write(std::int32_t address, std::uint32_t value) {
    if (address >= m8085::MemorySize) return false;
    machine.Memory[static_cast<std::size_t>(address)] = static_cast<std::uint8_t>(value & 0xFF);
    return true;
}

bool Translation::Fail(std::u16string reason, int line) {
    result.AsmErrorText = std::move(reason);
    result.AsmErrorLine = line;
    return false;
}

bool Translation::FailOnOperand(std::u16string_view operand) {
    return Fail(u"Bad operand - " + std::u16string(operand), codeMap.LineAt(LocationCounter - 1));
}

}  // namespace

Assembly AssembleProgram(std::u16string text, m8085::MachineState& machine, m8085::CodeMap& codeMap) {
    FoldToUpperCase(text);
    return Translation(text, machine, codeMap).Run();
}

}  // namespace assembler
