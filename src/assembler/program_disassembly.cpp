#include "assembler/program_disassembly.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

#include "assembler/assembler.h"
#include "assembler/disassembly.h"
#include "assembler/instruction_table.h"
#include "assembler/label_table.h"
#include "assembler/source_preparation.h"
#include "machine/address_space.h"
#include "machine/bytes.h"
#include "machine/number_format.h"

namespace assembler {

namespace {

using m8085::FormatHexLong;

class Disassembly {
public:
    Disassembly(std::span<const std::uint8_t> bytes, std::int32_t origin) : bytes_(bytes), origin_(origin) {
        const auto room = static_cast<std::size_t>(m8085::MemorySize - origin);
        if (bytes_.size() <= room) return;
        bytes_ = bytes_.first(room);
        program_.Obstacles.push_back("the bytes beyond FFFF are left out");
    }

    DisassembledProgram Run() {
        for (std::size_t at = 0; at < bytes_.size(); at += LengthAt(at)) {
            starts_.insert(AddressOf(at));
            if (IsBranch(at)) targets_.insert(TargetAt(at));
        }
        for (std::size_t at = 0; at < bytes_.size(); at += LengthAt(at)) WriteLine(at);
        LookAtLimits();
        return std::move(program_);
    }

private:
    std::int32_t AddressOf(std::size_t at) const { return origin_ + static_cast<std::int32_t>(at); }
    std::size_t LengthAt(std::size_t at) const { return static_cast<std::size_t>(InstructionLength(bytes_[at])); }
    bool IsWhole(std::size_t at) const { return at + LengthAt(at) <= bytes_.size(); }
    bool IsBranch(std::size_t at) const {
        const InstructionRow* row = FindInstruction(bytes_[at]);
        return row != nullptr && row->TakesLabel() && IsWhole(at);
    }
    std::int32_t TargetAt(std::size_t at) const { return m8085::Join(bytes_[at + 2], bytes_[at + 1]); }

    void WriteLine(std::size_t at) {
        const std::string address = FormatHexLong(AddressOf(at));
        const InstructionRow* row = FindInstruction(bytes_[at]);
        if (row == nullptr) return Mark(address, m8085::FormatHexByte(bytes_[at]) + " is not an instruction");
        if (!IsWhole(at)) return Mark(address, "the program ends inside an instruction");
        if (targets_.contains(AddressOf(at))) {
            program_.Text += "L" + address + ":\n";
            isLastALabel_ = true;
            ++entries_;
        }
        std::array<std::uint8_t, 3> instruction{};
        std::copy_n(bytes_.begin() + static_cast<std::ptrdiff_t>(at), LengthAt(at), instruction.begin());
        if (!IsBranch(at)) {
            program_.Text += Disassemble(instruction) + "\n";
            return;
        }
        isLastALabel_ = false;
        ++entries_;
        const std::string target = FormatHexLong(TargetAt(at));
        const std::string mnemonic(row->Mnemonic);
        program_.Text += mnemonic + " L" + target + "\n";
        if (!starts_.contains(TargetAt(at)))
            Mark(address, mnemonic + " goes to " + target + ", where no instruction of the program begins");
    }

    // Jumps do not find a label in the last place of the table.
    void LookAtLimits() {
        if (entries_ > LabelTable::Slots || (entries_ == LabelTable::Slots && isLastALabel_))
            program_.Obstacles.push_back("it has " + std::to_string(entries_) +
                                         " labels, jumps and calls, more than a program may have");
        const std::u16string text(program_.Text.begin(), program_.Text.end());
        if (const auto excess = ExplainExcessLength(PrepareProgram(text).Length, 0))
            program_.Obstacles.push_back(*excess);
    }

    void Mark(const std::string& address, const std::string& obstacle) {
        program_.Text += "; " + address + " - " + obstacle + "\n";
        program_.Obstacles.push_back(address + ": " + obstacle);
    }

    std::span<const std::uint8_t> bytes_;
    std::int32_t origin_;
    DisassembledProgram program_;
    std::set<std::int32_t> starts_;
    std::set<std::int32_t> targets_;
    int entries_ = 0;
    bool isLastALabel_ = false;
};

}  // namespace

DisassembledProgram DisassembleProgram(std::span<const std::uint8_t> bytes, std::int32_t origin) {
    return Disassembly(bytes, origin).Run();
}

}  // namespace assembler
