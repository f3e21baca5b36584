#pragma once

namespace m8085 {

// What separates the words of a line.
constexpr bool IsBlank(char16_t character) {
    return character == u' ' || character == u'\t';
}

// Only a to z change: other alphabets fold differently from language to language.
constexpr char16_t ToUpperCase(char16_t character) {
    return character >= u'a' && character <= u'z' ? static_cast<char16_t>(character - u'a' + u'A') : character;
}

// Only A to Z change.
constexpr char16_t ToLowerCase(char16_t character) {
    return character >= u'A' && character <= u'Z' ? static_cast<char16_t>(character - u'A' + u'a') : character;
}

// Of the Latin alphabet without accents.
constexpr bool IsLetter(char16_t character) {
    return ToUpperCase(character) != ToLowerCase(character);
}

}  // namespace m8085
