#include "editor/plain_source.h"

namespace editor {

namespace {

bool LooksLikeABlank(char16_t character) {
    switch (character) {
        case u'\v':
        case u'\f':
        case u'\u00A0':  // no-break space
        case u'\u202F':  // narrow no-break space
        case u'\u3000':  // ideographic space
            return true;
        default: return character >= u'\u2000' && character <= u'\u200A';  // spaces of all widths
    }
}

bool CannotBeSeen(char16_t character) {
    switch (character) {
        case u'\u00AD':  // soft hyphen
        case u'\u200B':  // zero width space
        case u'\u200E':  // left-to-right mark
        case u'\u200F':  // right-to-left mark
        case u'\u2060':  // word joiner
        case u'\uFEFF':  // zero width no-break space
            return true;
        default: return false;
    }
}

bool EndsALine(char16_t character) {
    return character == u'\u0085' || character == u'\u2028' || character == u'\u2029';
}

}  // namespace

std::u16string PlainSource(std::u16string_view text) {
    std::u16string plain;
    plain.reserve(text.size());
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
