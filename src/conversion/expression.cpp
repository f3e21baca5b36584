#include "conversion/expression.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

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

// In quotes.
bool BeginsWithCharacter(View text) {
    return text.size() > 2 && m8085::IsQuote(text[0]) && text[2] == text[0];
}

std::optional<Value> ReadCharacter(View word) {
    return word.size() == 3 && BeginsWithCharacter(word) && word[1] < 0x80 ? std::optional(Constant(word[1]))
                                                                           : std::nullopt;
}

std::optional<std::int64_t> ReadWithPrefix(View word) {
    for (const View prefix : {View(u"0X"), View(u"$"), View(u"&H")})
        if (word.starts_with(prefix)) return ReadDigits(word.substr(prefix.size()), 16);
    return {};
}

// What it is where digits alone are decimal, and a final letter or "0b" in front says the base.
std::optional<std::int64_t> ReadWithSuffix(View word) {
    if (const auto decimal = ReadDigits(word, 10)) return decimal;
    if (word.starts_with(u"0B")) return ReadDigits(word.substr(2), 2);
    constexpr std::pair<char16_t, int> bases[] = {{u'D', 10}, {u'B', 2}, {u'Q', 8}, {u'O', 8}};
    for (const auto& [suffix, base] : bases)
        if (word.ends_with(suffix)) return ReadDigits(word.substr(0, word.size() - 1), base);
    return {};
}

// Whether a number that could be hexadecimal is not. Four digits may be an address in any program, but nobody writes an
// address or a byte with so many zeros and ones before or after a B.
bool IsOther(View word, const Notation& notation) {
    constexpr std::size_t addressDigits = 4;
    const bool isAddress = word.size() == addressDigits;
    if (notation.AllDecimal || (word.starts_with(u"0B") && word.size() > addressDigits + 1)) return true;
    if (word.ends_with(u'B')) return word.size() > addressDigits || (notation.HasB && !isAddress);
    return word.ends_with(u'D') && notation.HasD && !isAddress;
}

// As programs write them, and one sign for each; before a single term, and between two.
constexpr std::pair<View, char> unaryOperators[] = {{u"HIGH", 'H'}, {u"LOW", 'L'}, {u"NOT", '~'}};
constexpr std::pair<View, char> operators[] = {{u"+", '+'},   {u"-", '-'},  {u"*", '*'},   {u"/", '/'},  {u"MOD", '%'},
                                               {u"AND", '&'}, {u"&", '&'},  {u"OR", '|'},  {u"|", '|'},  {u"XOR", '^'},
                                               {u"^", '^'},   {u"<<", '<'}, {u"SHL", '<'}, {u">>", '>'}, {u"SHR", '>'}};

// The operator that the text begins with; the last one of the list if none does. One that is a word has a blank or a
// parenthesis after it. "--" with a blank after it begins a comment.
const auto* FindOperator(const auto& list, View text) {
    const auto begins = [&](const auto& entry) {
        const auto& [name, sign] = entry;
        if (m8085::UpperCase(text.substr(0, name.size())) != name || text.starts_with(u"-- ")) return false;
        return !m8085::IsLetter(name[0]) ||
               (text.size() > name.size() && View(u" \t(").find(text[name.size()]) != View::npos);
    };
    return std::find_if(std::begin(list), std::end(list), begins);
}

// Of a name, a number, a character in quotes, or an expression in parentheses.
std::size_t LengthOfTerm(View text) {
    if (BeginsWithCharacter(text)) return 3;
    if (text.starts_with(u'(')) {
        constexpr std::size_t longest = 200;
        int depth = 0;
        for (std::size_t at = 0; at < std::min(text.size(), longest); ++at) {
            depth += text[at] == u'(' ? 1 : text[at] == u')' ? -1 : 0;
            if (depth == 0) return at + 1;
        }
    }
    const std::size_t length = std::min(text.find_first_of(u" \t,+-*/()&|^<>", 1), text.size());
    if (text.empty() || !m8085::IsDecimalDigit(text[0])) return length;
    const std::size_t next = std::min(text.find_first_not_of(u" \t", length), text.size());
    const View letter = text.substr(next, text.substr(next).find_first_of(u" \t,+-*/()&|^<>"));
    return letter == u"H" || letter == u"h" ? next + 1 : length;
}

bool IsWithinBounds(const Value& value) {
    return std::max({std::abs(value.Number), std::abs(value.IfDecimal), std::abs(value.Moved)}) <= 2 * beyond &&
           std::abs(value.Addresses) <= 2;
}

std::optional<std::int64_t> Compute(char sign, std::int64_t left, std::int64_t right) {
    constexpr std::int64_t mostShifted = 15;
    const bool isShift = sign == '<' || sign == '>';
    const bool divides = sign == '/' || sign == '%';
    if (left < 0 || right < 0 || (isShift && right > mostShifted) || (divides && right == 0)) return {};
    switch (sign) {
        case '*': return left * right;
        case '/': return left / right;
        case '%': return left % right;
        case '&': return left & right;
        case '|': return left | right;
        case '^': return left ^ right;
        case '<': return left << right;
        default: return left >> right;
    }
}

// Whether it is the same in all readings.
bool IsConstant(const Value& value) {
    return value.Addresses == 0 && value.Moved == value.Number && value.IfDecimal == value.Number;
}

// Addresses and numbers that may be decimal can only be added and subtracted.
std::optional<Value> Combine(char sign, const Value& left, const Value& right) {
    if (sign == '+' || sign == '-') {
        const int factor = sign == '-' ? -1 : 1;
        return Value{left.Number + factor * right.Number, left.IfDecimal + factor * right.IfDecimal,
                     left.Moved + factor * right.Moved, left.Addresses + factor * right.Addresses};
    }
    const bool areConstant = IsConstant(left) && IsConstant(right);
    const auto number = areConstant ? Compute(sign, left.Number, right.Number) : std::nullopt;
    return number ? std::optional(Constant(*number)) : std::nullopt;
}

std::int64_t ApplyTo(std::int64_t number, char sign) {
    return sign == '~' ? ~number : (sign == 'H' ? number >> 8 : number) & 0xFF;
}

// Assemblers do not agree on which operators go first. What is not the same from left to right as by the rules of
// arithmetic is not read.
class ExpressionReader {
public:
    ExpressionReader(View text, const ValueOfName& valueOf, const Notation& notation)
        : rest_(Trimmed(text)), valueOf_(valueOf), notation_(notation) {}

    std::optional<Value> Read() {
        if (const auto* found = FindOperator(unaryOperators, rest_); found != std::end(unaryOperators)) {
            Take(found->first.size());
            const auto value = ReadTerm();
            return value && rest_.empty() ? Apply(found->second, *value) : std::nullopt;
        }
        std::optional<Value> value = ReadTerm();
        while (value && !rest_.empty()) {
            const auto* found = FindOperator(operators, rest_);
            if (found == std::end(operators) || !MayFollow(found->second)) return {};
            Take(found->first.size());
            const auto right = ReadTerm();
            value = right ? Combine(found->second, *value, *right) : std::nullopt;
            if (value && !IsWithinBounds(*value)) return {};
        }
        return value;
    }

private:
    void Take(std::size_t length) { rest_ = Trimmed(rest_.substr(length)); }

    // After products come sums; others stand among their own.
    bool MayFollow(char sign) {
        const bool isProduct = std::string_view("*/%").find(sign) != std::string_view::npos;
        const bool isSum = sign == '+' || sign == '-';
        const bool fits = last_ == 0 || sign == last_ || (isSum && !isOther_) || (isProduct && isProduct_);
        isProduct_ = isProduct;
        isOther_ = !isSum && !isProduct;
        last_ = sign;
        return fits;
    }

    static std::optional<Value> Apply(char sign, const Value& value) {
        if (value.Addresses == 1 && sign != '~') return Constant(ApplyTo(value.Moved, sign));
        if (value.Addresses != 0 || value.Moved != value.Number) return {};
        const std::int64_t number = ApplyTo(value.Number, sign);
        return Value{number, ApplyTo(value.IfDecimal, sign), number, 0};
    }

    // With signs before it.
    std::optional<Value> ReadTerm() {
        char sign = '+';
        for (; rest_.starts_with(u'-') || rest_.starts_with(u'+'); Take(1))
            if (rest_[0] == u'-') sign = sign == '-' ? '+' : '-';
        const View term = rest_.substr(0, LengthOfTerm(rest_));
        Take(term.size());
        const bool isNumber = term.empty() || m8085::IsDecimalDigit(term[0]);
        std::optional<Value> value = isNumber ? std::nullopt : valueOf_(m8085::UpperCase(term));
        if (!value && term.starts_with(u'(') && term.ends_with(u')'))
            value = ExpressionReader(term.substr(1, term.size() - 2), valueOf_, notation_).Read();
        // No assembler with sums has numbers that begin with a letter.
        const bool isAlone = last_ == 0 && rest_.empty();
        if (!value && (isAlone || term.empty() || !m8085::IsLetter(term[0]))) value = ReadNumber(term, notation_);
        return value ? Combine(sign, {}, *value) : std::nullopt;
    }

    View rest_;
    const ValueOfName& valueOf_;
    const Notation& notation_;
    char last_ = 0;  // operator
    bool isProduct_ = false;
    bool isOther_ = false;  // than a product and a sum
};

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
    return ExpressionReader(text, valueOf, notation).Read();
}

bool IsUnaryOperator(View word) {
    return std::ranges::count(unaryOperators, m8085::UpperCase(word), &std::pair<View, char>::first) > 0;
}

std::size_t LengthOfExpression(View text) {
    std::size_t end = 0;
    for (std::size_t at = 0;;) {
        const auto pass = [&](std::size_t length) {
            at = std::min(text.find_first_not_of(u" \t", at + length), text.size());
        };
        for (pass(0); at < text.size() && (text[at] == u'+' || text[at] == u'-');) pass(1);
        if (const auto* found = FindOperator(unaryOperators, text.substr(at)); found != std::end(unaryOperators))
            pass(found->first.size());
        end = at + LengthOfTerm(text.substr(at));
        pass(end - at);
        const auto* found = FindOperator(operators, text.substr(at));
        if (found == std::end(operators)) return end;
        pass(found->first.size());
    }
}

std::optional<Choice> Choose(const std::optional<Value>& value, std::int32_t largest) {
    const auto fitted = [largest](std::int64_t number) -> std::optional<std::int32_t> {
        if (number > largest || number < -(largest / 2) - 1) return {};
        return static_cast<std::int32_t>(number & largest);
    };
    if (!value) return {};
    const bool isAddress = value->Addresses == 1 && largest > 0xFF && value->Moved >= 0;
    if (isAddress)
        if (const auto number = fitted(value->Moved)) return Choice{*number};
    if (value->Addresses != 0 || value->Moved != value->Number) return {};
    if (const auto number = fitted(value->Number)) return Choice{*number};
    if (const auto number = fitted(value->IfDecimal)) return Choice{*number, true};
    return {};
}

std::u16string FormatNumber(std::int32_t number, bool isByte, bool withFinalH) {
    Text text =
        m8085::Wide(isByte ? m8085::FormatHexByte(static_cast<std::uint8_t>(number)) : m8085::FormatHexLong(number));
    if (text[0] > u'9') text.insert(0, 1, u'0');
    return withFinalH ? text + u'H' : text;
}

}  // namespace conversion
