#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "assembler/instruction_table.h"
#include "machine/text.h"

namespace conversion {

// What a line says, in this language or in that of another assembler.
enum class Kind {
    Nothing,  // but labels
    Instruction,
    Interrupt,  // an instruction of the chip that this machine does not have
    Origin,
    Begin,  // where a run begins, and the origin too if nothing else says it
    End,
    Heading,  // for the listing or the assembler itself
    Bytes,
    Words,
    Space,
    Equal,
    Unknown,
};

struct Label {
    std::u16string Name;  // in upper case
    std::size_t At = 0;
    std::optional<std::size_t> ColonAt;

    std::size_t End() const { return At + Name.size(); }
};

struct Operand {
    std::size_t At = 0;
    std::u16string Text;  // as it stands, never empty

    // Whether it is more than one character in quotes.
    bool IsString() const { return Text.size() > 3 && m8085::IsQuote(Text[0]) && Text.back() == Text[0]; }
};

// The code of one line. All places are indices into it.
struct Statement {
    Kind What = Kind::Nothing;
    std::vector<Label> Labels;
    std::u16string Operation;  // mnemonic or directive in upper case, with its "." or "#"
    std::size_t At = 0;        // where that begins
    std::vector<Operand> Operands;
    std::optional<std::size_t> RestAt;               // what follows the operands
    const assembler::InstructionRow* Row = nullptr;  // some row of the mnemonic
    std::optional<std::int32_t> Address;             // where it stands, if a listing says so

    bool IsInstruction() const { return What == Kind::Instruction || What == Kind::Interrupt; }
    bool IsOrigin() const { return What == Kind::Origin || What == Kind::Begin; }
    bool IsData() const { return What == Kind::Bytes || What == Kind::Words || What == Kind::Space; }
    bool DefinesNames() const { return IsData() || What == Kind::Equal; }

    // Whether there is a word and nothing after it.
    bool IsAlone() const { return !Operation.empty() && Operands.empty() && !RestAt; }

    // The label that a jump or call goes to, in upper case and without a colon; empty for any other statement.
    std::u16string Target() const;

    // The row of an instruction with all its operands, and registers where they belong; nullptr for anything else.
    const assembler::InstructionRow* WholeInstruction() const;
    bool IsWholeInstruction() const { return WholeInstruction() != nullptr; }
};

Statement ReadStatement(std::u16string_view code);

// An address and one to three bytes, "2000 3A 00 25".
struct Listing {
    std::int32_t Address = 0;
    std::int32_t FirstByte = 0;
    int Size = 0;  // in bytes
};

// Nothing for any other text.
std::optional<Listing> ReadListing(std::u16string_view text);

// The address in what a listing says of the instruction, with all or the first of its bytes. Nothing for any other
// text.
std::optional<std::int32_t> ReadListing(std::u16string_view text, const Statement& statement);

// Where the code begins after that. Nothing where there is none of it.
std::optional<std::size_t> FindAfterListing(std::u16string_view code);

// Whether a comment holds what may have been a statement that gives others their addresses.
bool IsFormerPlacement(std::u16string_view comment);

// Whether it can be a name without a colon, or a word of English.
bool IsName(std::u16string_view word);
bool IsWord(std::u16string_view word);

// Whether the text after an instruction may be another one. What goes on in words is English, unless its mnemonic is
// written in the letters, small or capital, of the instruction's own.
bool MayBeInstruction(std::u16string_view text, std::u16string_view mnemonic);

// Whether the code is more probably a line of English than a statement with a slip in it.
bool IsProse(const Statement& statement, std::u16string_view code);

}  // namespace conversion
