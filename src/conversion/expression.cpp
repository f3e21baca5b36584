#include "conversion/expression.h"

#include <algorithm>
#include <cstdlib>

#include "assembler/assembler.h"
#include "machine/number_format.h"
#include "machine/text.h"

namespace conversion {

namespace {

using m8085::Trimmed;

constexpr std::int64_t beyond = 0xFFFFFF;  // what no operand has room for

std::optional<std::int64_t> ReadDigits(View digits, int base) {
    return m8085::ReadDigits(digits, base, beyond);
}

Value Constant(std::int64_t number) {
    return {number, number, number, 0};
}

std::optional<Value> ReadCharacter(View word) {
    const bool isQuoted = word.size() == 3 && word[0] == word[2] && (word[0] == u'\'' || word[0] == u'"');
    return isQuoted && word[1] < 0x80 ? std::optional(Constant(word[1])) : std::nullopt;
}

std::optional<std::int64_t> ReadWithPrefix(View word) {
    for (const View prefix : {View(u"0X"), View(u"$"), View(u"&H")})
        if (word.starts_with(prefix)) return ReadDigits(word.substr(prefix.size()), 16);
    return {};
}

// What it is where digits alone are decimal and a final letter says the base.
std::optional<std::int64_t> ReadWithSuffix(View word) {
    if (const auto decimal = ReadDigits(word, 10)) return decimal;
    constexpr std::pair<char16_t, int> bases[] = {{u'D', 10}, {u'B', 2}, {u'Q', 8}, {u'O', 8}};
    for (const auto& [suffix, base] : bases)
        if (word.ends_with(suffix)) return ReadDigits(word.substr(0, word.size() - 1), base);
    return {};
}

// Whether a number that could be hexadecimal is not. Four digits may be an address in any program, but nobody writes an
// address or a byte with so many zeros and ones in front of a B.
bool IsOther(View word, const Notation& notation) {
    constexpr std::size_t addressDigits = 4;
    const bool isAddress = word.size() == addressDigits;
    if (notation.AllDecimal) return true;
    if (word.ends_with(u'B')) return word.size() > addressDigits || (notation.HasB && !isAddress);
    return word.ends_with(u'D') && notation.HasD && !isAddress;
}

std::size_t EndOfTerm(View text) {
    const bool isQuoted = text.size() > 2 && text[0] == text[2] && (text[0] == u'\'' || text[0] == u'"');
    return std::min(isQuoted ? 3 : text.find_first_of(u"+-"), text.size());
}

std::optional<Value> ReadTerm(View term, const ValueOfName& valueOf, const Notation& notation) {
    const bool isNumber = term.empty() || (term[0] >= u'0' && term[0] <= u'9');
    if (!isNumber)
        if (const auto value = valueOf(m8085::UpperCase(term))) return value;
    return ReadNumber(term, notation);
}

// False where the sum grows without bounds.
bool Add(Value& sum, const Value& value, int sign) {
    sum.Number += sign * value.Number;
    sum.IfDecimal += sign * value.IfDecimal;
    sum.Moved += sign * value.Moved;
    sum.Addresses += sign * value.Addresses;
    return std::max({std::abs(sum.Number), std::abs(sum.IfDecimal), std::abs(sum.Moved)}) <= 2 * beyond &&
           std::abs(sum.Addresses) <= 2;
}

}  // namespace

std::optional<Value> ReadNumber(View word, const Notation& notation) {
    if (word.starts_with(u'#')) word.remove_prefix(1);
    if (const auto character = ReadCharacter(word)) return character;
    Text upper = m8085::UpperCase(word);
    if (upper.ends_with(u'H')) upper = Text(Trimmed(View(upper).substr(0, upper.size() - 1))) + u'H';
    if (const auto number = ReadWithPrefix(upper)) return Constant(*number);
    const auto hexadecimal = assembler::ReadNumber(upper);
    const auto other = ReadWithSuffix(upper);
    if (!hexadecimal && !other) return {};
    if (!hexadecimal || (other && IsOther(upper, notation))) return Constant(*other);
    return Value{*hexadecimal, other.value_or(*hexadecimal), *hexadecimal, 0};
}

std::optional<Value> ReadExpression(View text, const ValueOfName& valueOf, const Notation& notation) {
    Value sum;
    text = Trimmed(text);
    for (int sign = 1;;) {
        if (text.starts_with(u'-') || text.starts_with(u'+')) {
            sign *= text[0] == u'-' ? -1 : 1;
            text = Trimmed(text.substr(1));
        }
        const std::size_t end = EndOfTerm(text);
        const auto value = ReadTerm(Trimmed(text.substr(0, end)), valueOf, notation);
        if (!value || !Add(sum, *value, sign)) return {};
        text = Trimmed(text.substr(end));
        if (text.empty()) return sum;
        if (text[0] != u'+' && text[0] != u'-') return {};
        sign = text[0] == u'-' ? -1 : 1;
        text = Trimmed(text.substr(1));
    }
}

std::optional<Choice> Choose(const Value& value, std::int32_t largest) {
    const auto fitted = [largest](std::int64_t number) -> std::optional<std::int32_t> {
        if (number > largest || number < -(largest / 2) - 1) return {};
        return static_cast<std::int32_t>(number & largest);
    };
    const bool isAddress = value.Addresses == 1 && largest > 0xFF && value.Moved >= 0;
    if (isAddress)
        if (const auto number = fitted(value.Moved)) return Choice{*number};
    if (value.Addresses != 0 || value.Moved != value.Number) return {};
    if (const auto number = fitted(value.Number)) return Choice{*number};
    if (const auto number = fitted(value.IfDecimal)) return Choice{*number, true};
    return {};
}

std::u16string FormatNumber(std::int32_t number, bool isByte, bool withFinalH) {
    Text text =
        m8085::Wide(isByte ? m8085::FormatHexByte(static_cast<std::uint8_t>(number)) : m8085::FormatHexLong(number));
    if (text[0] > u'9') text.insert(0, 1, u'0');
    return withFinalH ? text + u'H' : text;
}

}  // namespace conversion
