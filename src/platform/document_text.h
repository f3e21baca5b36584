#pragma once

#include <QString>
#include <QTextDocument>
#include <string>
#include <string_view>

namespace platform {

// What stands in a document, and where, as a program sees it. Three characters that the document keeps for itself stand
// in it as single halves of surrogate pairs; the first two exchange them. A whole pair stays.

// A stretch of the document's raw text, in which paragraph separators end the lines.
std::u16string FromDocumentText(QStringView raw, std::u16string_view lineEnd);

// Half a surrogate pair becomes the replacement character.
QString ToDocumentText(std::u16string_view text);

// A position in the document as one in its text with CR LF at the line ends, and back; both count from 0. A position
// inside a line end, or beyond the end of the text, becomes the nearest one before it.
int FromDocument(const QTextDocument& document, int position);
int ToDocument(const QTextDocument& document, int position);

}  // namespace platform
