#include "assembler/assembler.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>

#include "assembler/instruction_table.h"
#include "assembler/line_words.h"
#include "machine/bytes.h"
#include "machine/number_format.h"

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
    bool Scan();
    bool ProcessLine(std::u16string_view line);
    bool DefineLabel();
    bool TranslateInstruction();
    bool TranslateOperand(std::size_t place);
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
    std::array<std::u16string, 3> words_;  // mnemonic or label, and the operands
    const InstructionRow* row_ = nullptr;  // of the words translated so far
};

bool Translation::Scan() {
    if (text_.size() > LongestPreparedText) return FailGenerally();
    for (std::size_t end = text_.find(u'\n'); end != text_.npos; end = text_.find(u'\n')) {
        ++LineCounter;
        if (!ProcessLine(text_.substr(0, end))) return false;
        text_.remove_prefix(end + 1);
    }
    return true;
}

bool Translation::ProcessLine(std::u16string_view line) {
    words_ = {};
    for (std::size_t place = 0; PlacedWord & word : PlacedWordsOfLine(line))
        words_[place++ % words_.size()] = std::move(word.Text);
    if (words_[0].empty()) return true;
    return words_[0].ends_with(u':') ? DefineLabel() : TranslateInstruction();
}

bool Translation::DefineLabel() {
    words_[0].pop_back();
    return result_.Labels.Append({words_[0], LocationCounter, LabelKind::Definition, LineCounter}) || FailGenerally();
}

bool Translation::TranslateInstruction() {
    constexpr std::size_t longestSearchableWord = 5;
    codeMap_.SetLine(LocationCounter, LineCounter);
    if (words_[0].size() > longestSearchableWord) return FailGenerally();
    row_ = FindInstruction(words_[0]);
    if (row_ == nullptr) return Fail(u"Bad opcode - " + words_[0], codeMap_.LineAt(LocationCounter));
    if (!Write(LocationCounter, row_->Opcode)) return FailGenerally();
    result_.Instructions.push_back(LocationCounter++);
    return TranslateOperand(0) && TranslateOperand(1);
}

// A register operand selects the row, and so the opcode.
bool Translation::TranslateOperand(std::size_t place) {
    const std::u16string& word = words_[place + 1];
    const std::string_view column = row_->Operands[place];
    if (column.empty()) return true;
    if (column == "I8") return EmitByte(word);
    if (column == "I16") return row_->TakesLabel() ? EmitReference() : EmitWord(word);
    row_ = word.empty() ? nullptr : FindInstruction(words_[0], words_[1], place == 0 ? std::u16string_view() : word);
    if (row_ == nullptr) return Fail(u"Bad operand - " + word, codeMap_.LineAt(LocationCounter - 1));
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
    if (!result_.Labels.Append({words_[1], LocationCounter, LabelKind::Reference, LineCounter})) return FailGenerally();
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

Assembly AssembleProgram(std::u16string_view text, m8085::MachineState& machine, m8085::CodeMap& codeMap,
                         std::int32_t origin) {
    return Translation(text, machine, codeMap, origin).Run();
}

}  // namespace assembler
