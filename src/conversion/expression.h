#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace conversion {

// The texts of programs.
using Text = std::u16string;
using View = std::u16string_view;

// What an operand comes to, in the readings that it has.
struct Value {
    std::int64_t Number = 0;     // digits alone are hexadecimal
    std::int64_t IfDecimal = 0;  // digits alone are decimal
    std::int64_t Moved = 0;      // Number, with names for the addresses that they have after the conversion
    int Addresses = 0;           // of how many of those it is the sum, less those that are taken away

    bool operator==(const Value&) const = default;
};

// How a program writes its numbers, as far as hexadecimal ones could be written so as well.
struct Notation {
    bool AllDecimal = false;  // whatever could be decimal or binary is
    bool HasD = false;        // decimal ones have a final D
    bool HasB = false;        // binary ones have a final B
};

// A number as programs for other assemblers write it: what this language takes, and 10D, 1010B, 0b1010, 17Q, 0x1F, $1F,
// &H1F, "05 H", 'A', and any of them after a "#". Nothing for any other text. What is far above FFFF reads as some
// number above FFFF.
std::optional<Value> ReadNumber(std::u16string_view word, const Notation& notation = {});

// The value of a name in upper case, or of $ for the current address.
using ValueOfName = std::function<std::optional<Value>(std::u16string_view)>;

// The value of names and numbers with operators between them or in front. Names come before numbers, which they are not
// taken for if they begin with a digit. Nothing for any other text, and where assemblers may differ in what they do
// first.
std::optional<Value> ReadExpression(std::u16string_view text, const ValueOfName& valueOf, const Notation& notation);

// HIGH, LOW or NOT, in either case.
bool IsUnaryOperator(std::u16string_view word);

// How far an expression goes that the text begins with, readable or not. "05 H" is one term.
std::size_t LengthOfExpression(std::u16string_view text);

// The number to be used where there is room for one up to `largest`, FF or FFFF.
struct Choice {
    std::int32_t Number = 0;
    bool IsSurelyDecimal = false;  // in hexadecimal there is no room for it
};

// Negative numbers become what the machine has for them. Nothing without a value, if there is no room in any reading,
// and where moving the program has changed a distance.
std::optional<Choice> Choose(const std::optional<Value>& value, std::int32_t largest);

// "0AH" or "0F00AH", or the same without the H.
std::u16string FormatNumber(std::int32_t number, bool isByte, bool withFinalH);

}  // namespace conversion
