#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace m8085 {

// What separates the words of a line.
constexpr bool IsBlank(auto character) {
    return character == ' ' || character == '\t';
}

constexpr bool IsQuote(char16_t character) {
    return character == u'\'' || character == u'"';
}

constexpr bool IsDecimalDigit(char16_t character) {
    return character >= u'0' && character <= u'9';
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

bool Contains(const auto& list, const auto& item) {
    return std::ranges::find(list, item) != std::ranges::end(list);
}

// All of them, with the separators between them: the second one before the last of them.
template <class Text>
Text Joined(const std::vector<Text>& texts, const std::type_identity_t<Text>& separator,
            const std::type_identity_t<Text>& lastSeparator) {
    Text all;
    for (const Text& text : texts) {
        if (&text != texts.data()) all += &text == &texts.back() ? lastSeparator : separator;
        all += text;
    }
    return all;
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
template <class Text>
auto Trimmed(const Text& text) {
    std::basic_string_view<typename Text::value_type> rest(text);
    while (!rest.empty() && IsBlank(rest.front())) rest.remove_prefix(1);
    while (!rest.empty() && IsBlank(rest.back())) rest.remove_suffix(1);
    return rest;
}

// What stands between the separators: one part more than there are of them.
template <class Text>
auto PartsOf(const Text& text, typename Text::value_type separator) {
    std::basic_string_view<typename Text::value_type> rest(text);
    std::vector<decltype(rest)> parts;
    for (std::size_t end = rest.find(separator); end != rest.npos; end = rest.find(separator)) {
        parts.push_back(rest.substr(0, end));
        rest.remove_prefix(end + 1);
    }
    parts.push_back(rest);
    return parts;
}

// Its lines without their ends. CR LF, LF and CR each end one; after the last end there is none.
template <class Text>
auto LinesOf(const Text& text) {
    std::vector<std::basic_string_view<typename Text::value_type>> lines;
    for (auto next = text.begin(); next != text.end();) {
        const auto end =
            std::find_if(next, text.end(), [](auto character) { return character == '\r' || character == '\n'; });
        lines.emplace_back(next, end);
        next = end;
        if (next != text.end() && *next++ == '\r' && next != text.end() && *next == '\n') ++next;
    }
    return lines;
}

}  // namespace m8085
