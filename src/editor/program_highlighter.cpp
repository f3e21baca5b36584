#include "editor/program_highlighter.h"

#include <ranges>

#include "editor/syntax_colouring.h"

namespace editor {

namespace {

// In one line. Qt lays out a line again at each key, span by span.
constexpr int mostSpans = 3000;

}  // namespace

ProgramHighlighter::ProgramHighlighter(QTextDocument* document) : QSyntaxHighlighter(document) {
    mnemonic_.setForeground(QColor(0, 0, 255));
    mnemonic_.setFontWeight(QFont::Bold);
    comment_.setForeground(QColor(125, 0, 0));
    comment_.setFontItalic(true);
    mnemonicInComment_ = comment_;
    mnemonicInComment_.setFontWeight(QFont::Bold);
}

void ProgramHighlighter::highlightBlock(const QString& line) {
    const std::u16string_view text(reinterpret_cast<const char16_t*>(line.utf16()),
                                   static_cast<std::size_t>(line.size()));
    for (const ColouredSpan& span : ApplyColorCode(text) | std::views::take(mostSpans)) {
        const QTextCharFormat& commentFormat = span.Mnemonic ? mnemonicInComment_ : comment_;
        setFormat(static_cast<int>(span.Start), static_cast<int>(span.Length),
                  span.Comment ? commentFormat : mnemonic_);
    }
}

}  // namespace editor
