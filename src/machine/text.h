#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace m8085 {

// What separates the words of a line.
constexpr bool IsBlank(auto character) {
    return character == ' ' || character == '\t';
}

// Only a to z change: other alphabets fold differently from language to language.
template <class Character>
constexpr Character ToUpperCase(Character character) {
    return character >= 'a' && character <= 'z' ? static_cast<Character>(character - 'a' + 'A') : character;
}

// Only A to Z change.
template <class Character>
constexpr Character ToLowerCase(Character character) {
    return character >= 'A' && character <= 'Z' ? static_cast<Character>(character - 'A' + 'a') : character;
}

// Of the Latin alphabet without accents.
constexpr bool IsLetter(char16_t character) {
    return ToUpperCase(character) != ToLowerCase(character);
}

// A text of ASCII characters alone.
inline std::u16string Wide(std::string_view ascii) {
    return {ascii.begin(), ascii.end()};
}

// With a to z in upper case; all else stays.
template <class Text>
auto UpperCase(const Text& text) {
    std::basic_string<typename Text::value_type> upper(text);
    std::ranges::transform(upper, upper.begin(), ToUpperCase<typename Text::value_type>);
    return upper;
}

// With A to Z in lower case.
template <class Text>
auto LowerCase(const Text& text) {
    std::basic_string<typename Text::value_type> lower(text);
    std::ranges::transform(lower, lower.begin(), ToLowerCase<typename Text::value_type>);
    return lower;
}

// Without blanks and tabs around it.
template <class View>
constexpr View Trimmed(View text) {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    return text;
}

}  // namespace m8085
