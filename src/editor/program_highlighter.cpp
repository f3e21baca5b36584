#include "editor/program_highlighter.h"

#include "editor/syntax_colouring.h"

namespace editor {

ProgramHighlighter::ProgramHighlighter(QTextDocument* document) : QSyntaxHighlighter(document) {
    mnemonic.setForeground(QColor(0, 0, 255));
    mnemonic.setFontWeight(QFont::Bold);
    comment.setForeground(QColor(125, 0, 0));
    comment.setFontItalic(true);
    mnemonicInComment = comment;
    mnemonicInComment.setFontWeight(QFont::Bold);
}

void ProgramHighlighter::highlightBlock(const QString& line) {
    const std::u16string_view text(reinterpret_cast<const char16_t*>(line.utf16()),
                                   static_cast<std::size_t>(line.size()));
    for (const ColouredSpan& span : ApplyColorCode(text)) {
        const QTextCharFormat& commentFormat = span.Mnemonic ? mnemonicInComment : comment;
        setFormat(static_cast<int>(span.Start), static_cast<int>(span.Length), span.Comment ? commentFormat : mnemonic);
    }
}

}  // namespace editor
