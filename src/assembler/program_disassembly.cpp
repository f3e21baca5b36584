#include "assembler/program_disassembly.h"

#include <algorithm>
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
#include "machine/text.h"

namespace assembler {

namespace {

using m8085::FormatHexLong;

// Bytes that make one line: a whole instruction, what there is of one, or a code that is not one as often as it follows
// itself.
struct Place {
    std::int32_t Address = 0;
    std::span<const std::uint8_t> Bytes;

    Place(std::int32_t address, std::span<const std::uint8_t> rest) : Address(address), Bytes(rest) {
        const std::size_t length = Row() == nullptr ? Repeats() : Length();
        Bytes = rest.first(std::min(length, rest.size()));
    }

    std::int32_t End() const { return Address + static_cast<std::int32_t>(Bytes.size()); }
    const InstructionRow* Row() const { return FindInstruction(Bytes[0]); }
    std::size_t Length() const { return static_cast<std::size_t>(InstructionLength(Bytes[0])); }
    bool IsInstruction() const { return Row() != nullptr && Bytes.size() == Length(); }
    bool IsBranch() const { return IsInstruction() && Row()->TakesLabel(); }
    std::int32_t Target() const { return m8085::Join(Bytes[2], Bytes[1]); }

private:
    std::size_t Repeats() const {
        const auto isOther = [code = Bytes[0]](std::uint8_t byte) { return byte != code; };
        return static_cast<std::size_t>(std::ranges::find_if(Bytes, isOther) - Bytes.begin());
    }
};

class Disassembly {
public:
    explicit Disassembly(std::span<const m8085::MemoryStretch> stretches) {
        for (const auto& [address, bytes] : stretches) AddStretch(address, bytes);
    }

    DisassembledProgram Run() {
        if (places_.empty()) return {};
        std::int32_t next = places_[0].Address;
        if (next != m8085::ProgramOrigin) program_.Text = "; for velmora-run --origin " + FormatHexLong(next) + '\n';
        for (const Place& place : places_) {
            if (place.Address > next) Mark(next, place.Address, "there are no bytes");
            WriteLine(place);
            next = place.End();
        }
        WriteLabel(next);
        LookAtLimits();
        return std::move(program_);
    }

private:
    void AddStretch(std::int32_t address, std::span<const std::uint8_t> bytes) {
        const auto room = static_cast<std::size_t>(m8085::MemorySize - address);
        if (bytes.size() > room) program_.Obstacles.emplace_back("the bytes beyond FFFF are left out");
        for (bytes = bytes.first(std::min(bytes.size(), room)); !bytes.empty();) {
            const Place& place = places_.emplace_back(address, bytes);
            if (place.IsInstruction()) starts_.insert(address);
            if (place.IsBranch()) targets_.insert(place.Target());
            address = place.End();
            bytes = bytes.subspan(place.Bytes.size());
        }
    }

    // A label can also stand at the end.
    bool IsStart(std::int32_t address) const { return starts_.contains(address) || address == places_.back().End(); }

    void WriteLabel(std::int32_t address) {
        if (!targets_.contains(address)) return;
        program_.Text += 'L' + FormatHexLong(address) + ":\n";
        isLastALabel_ = true;
        ++entries_;
    }

    void WriteLine(const Place& place) {
        const InstructionRow* row = place.Row();
        if (row == nullptr)
            return Mark(place.Address, place.End(), m8085::FormatHexByte(place.Bytes[0]) + " is not an instruction");
        if (!place.IsInstruction()) return Mark(place.Address, place.End(), "the bytes end inside an instruction");
        WriteLabel(place.Address);
        if (place.IsBranch()) return WriteBranch(place);
        program_.Text += Disassemble(place.Bytes) + '\n';
    }

    void WriteBranch(const Place& place) {
        const std::string mnemonic(place.Row()->Mnemonic);
        const std::string target = FormatHexLong(place.Target());
        program_.Text += mnemonic + " L" + target + '\n';
        isLastALabel_ = false;
        ++entries_;
        if (!IsStart(place.Target()))
            Mark(place.Address, place.Address + 1,
                 mnemonic + " goes to " + target + ", where no instruction of the program begins");
    }

    // Jumps do not find a label in the last place of the table.
    void LookAtLimits() {
        if (entries_ > LabelTable::Slots || (entries_ == LabelTable::Slots && isLastALabel_))
            program_.Obstacles.push_back("it has " + std::to_string(entries_) +
                                         " labels, jumps and calls, more than a program may have");
        if (const auto excess = ExplainExcessLength(PrepareProgram(m8085::Wide(program_.Text)).Length, 0))
            program_.Obstacles.push_back(*excess);
    }

    // `end` is the address after the last that the obstacle is about.
    void Mark(std::int32_t address, std::int32_t end, const std::string& obstacle) {
        std::string line = FormatHexLong(address);
        if (end > address + 1) line += " to " + FormatHexLong(end - 1);
        line += " - " + obstacle;
        program_.Text += "; " + line + '\n';
        program_.Obstacles.push_back(std::move(line));
    }

    DisassembledProgram program_;
    std::vector<Place> places_;
    std::set<std::int32_t> starts_;
    std::set<std::int32_t> targets_;
    int entries_ = 0;  // labels, jumps and calls
    bool isLastALabel_ = false;
};

}  // namespace

DisassembledProgram DisassembleProgram(std::span<const m8085::MemoryStretch> stretches) {
    return Disassembly(stretches).Run();
}

}  // namespace assembler
