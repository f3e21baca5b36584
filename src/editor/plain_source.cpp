#include "editor/plain_source.h"

namespace editor {

namespace {

bool IsAmong(char16_t character, char16_t first, char16_t last) {
    return character >= first && character <= last;
}

bool LooksLikeABlank(char16_t character) {
    switch (character) {
        case u'\v':
        case u'\f':
        case u'\u00A0':  // no-break space
        case u'\u202F':  // narrow no-break space
        case u'\u205F':  // space of mathematics
        case u'\u3000':  // ideographic space
            return true;
        default: return IsAmong(character, u'\u2000', u'\u200A');  // spaces of all widths
    }
}

// The joiners U+200C and U+200D are not among them: in some scripts they belong to a word.
bool CannotBeSeen(char16_t character) {
    switch (character) {
        case u'\u00AD':  // soft hyphen
        case u'\u200B':  // space without width
        case u'\u200E':  // marks of the writing direction
        case u'\u200F':
        case u'\uFEFF':  // byte order mark
            return true;
        default:
            return IsAmong(character, u'\u202A', u'\u202E') ||  // embedded writing directions
                   IsAmong(character, u'\u2060', u'\u206F');    // word joiner, other directions
    }
}

bool EndsALine(char16_t character) {
    return character == u'\u0085' || character == u'\u2028' || character == u'\u2029';
}

}  // namespace

std::u16string PlainSource(std::u16string_view text) {
    std::u16string plain;
    bool isInComment = false;
    for (const char16_t character : text) {
        if (character == u'\n' || character == u'\r') isInComment = false;
        if (character == u';') isInComment = true;
        if (!isInComment && LooksLikeABlank(character))
            plain += u' ';
        else if (!isInComment && EndsALine(character))
            plain += u'\n';
        else if (isInComment || !CannotBeSeen(character))
            plain += character;
    }
    return plain;
}

}  // namespace editor
