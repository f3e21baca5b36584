#include "platform/document_text.h"

#include <QTextBlock>
#include <algorithm>
#include <utility>

namespace platform {

namespace {

// The document keeps three characters for itself, as separators of its parts. In it others stand for them, which no
// text has: second halves of surrogate pairs without the first.
constexpr std::pair<char16_t, char16_t> standIns[] = {{u'\u2029', 0xDC29}, {u'\uFDD0', 0xDCD0}, {u'\uFDD1', 0xDCD1}};

}  // namespace

std::u16string FromDocumentText(QStringView raw, std::u16string_view lineEnd) {
    std::u16string text;
    bool isAfterHalf = false;
    text.reserve(static_cast<std::size_t>(raw.size()) + static_cast<std::size_t>(raw.size() / 8));
    for (const QChar character : raw) {
        if (character == QChar::ParagraphSeparator) {
            text += lineEnd;
            continue;
        }
        text += character.unicode();
        const bool standsAlone = character.isLowSurrogate() && !isAfterHalf;
        isAfterHalf = character.isHighSurrogate();
        if (!standsAlone) continue;
        for (const auto& [own, standIn] : standIns)
            if (character == standIn) text.back() = own;
    }
    return text;
}

QString ToDocumentText(std::u16string_view text) {
    QString characters = QStringView(text).toString();
    for (qsizetype i = 0; i < characters.size(); ++i) {
        QChar& character = characters[i];
        if (character.isHighSurrogate() && i + 1 < characters.size() && characters[i + 1].isLowSurrogate())
            ++i;
        else if (character.isSurrogate())
            character = QChar::ReplacementCharacter;
        else
            for (const auto& [own, standIn] : standIns)
                if (character == own) character = standIn;
    }
    return characters;
}

// In the document a line end is one character; before a position there are as many as the number of its line.
int FromDocument(const QTextDocument& document, int position) {
    return position + document.findBlock(position).blockNumber();
}

int ToDocument(const QTextDocument& document, int position) {
    int first = 0;
    int last = document.blockCount() - 1;
    while (first < last) {
        const int middle = (first + last + 1) / 2;
        if (document.findBlockByNumber(middle).position() + middle <= position)
            first = middle;
        else
            last = middle - 1;
    }
    const QTextBlock block = document.findBlockByNumber(first);
    const int column = std::clamp(position - first - block.position(), 0, block.length() - 1);
    return block.position() + column;
}

}  // namespace platform
