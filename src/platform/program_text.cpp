#include "platform/program_text.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QScrollBar>
#include <QTextBlock>
#include <algorithm>

#include "platform/fonts.h"

namespace platform {

namespace {

// The document's raw text ends its lines in paragraph separators.
std::u16string WithLineEnds(const QString& raw) {
    std::u16string text;
    text.reserve(static_cast<std::size_t>(raw.size()) + static_cast<std::size_t>(raw.size() / 8));
    for (const QChar character : raw) {
        if (character == QChar::ParagraphSeparator)
            text += u"\r\n";
        else
            text += character.unicode();
    }
    return text;
}

// The characters that the document keeps for itself, as separators of its parts, become the replacement character.
QString ToDocumentText(std::u16string_view text) {
    QString characters = QStringView(text).toString();
    for (QChar& character : characters)
        if (character == QChar::ParagraphSeparator || character == u'\uFDD0' || character == u'\uFDD1')
            character = QChar::ReplacementCharacter;
    return characters;
}

}  // namespace

ProgramText::ProgramText(QWidget* parent) : QPlainTextEdit(parent) {
    setObjectName("txtCode");
    setAccessibleName("Program text");
    setFont(CourierNew(11.25));
    setLineWrapMode(NoWrap);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setTabStopDistance(8 * fontMetrics().horizontalAdvance(' '));
    connect(this, &QPlainTextEdit::textChanged, this, &ProgramText::TextChanged);
}

std::u16string ProgramText::Text() const {
    return WithLineEnds(document()->toRawText());
}

int ProgramText::Length() const {
    return FromDocument(document()->characterCount() - 1);
}

void ProgramText::SetText(std::u16string_view text) {
    setPlainText(ToDocumentText(text));
}

int ProgramText::SelectionStart() const {
    return FromDocument(textCursor().selectionStart());
}

void ProgramText::SetSelectionStart(int position) {
    QTextCursor cursor = textCursor();
    cursor.setPosition(ToDocument(position));
    setTextCursor(cursor);
}

void ProgramText::SetSelectionLength(int characters) {
    const int start = SelectionStart();
    QTextCursor cursor = textCursor();
    cursor.setPosition(ToDocument(start));
    cursor.setPosition(ToDocument(start + characters), QTextCursor::KeepAnchor);
    setTextCursor(cursor);
}

std::u16string ProgramText::SelectedText() const {
    return WithLineEnds(textCursor().selectedText());
}

void ProgramText::ReplaceSelection(std::u16string_view text) {
    QTextCursor cursor = textCursor();
    if (text.empty() && !cursor.hasSelection()) return;
    cursor.insertText(ToDocumentText(text));
    setTextCursor(cursor);
}

void ProgramText::InsertAt(const std::vector<std::size_t>& positions, std::u16string_view text) {
    if (positions.empty()) return;
    QTextCursor cursor = textCursor();
    cursor.beginEditBlock();
    const QString insertion = ToDocumentText(text);
    for (auto position = positions.rbegin(); position != positions.rend(); ++position) {
        cursor.setPosition(ToDocument(static_cast<int>(*position)));
        cursor.insertText(insertion);
    }
    cursor.endEditBlock();
    SetSelectionStart(static_cast<int>(positions.back() + positions.size() * text.size()));
}

void ProgramText::ClearSelection() {
    QTextCursor cursor = textCursor();
    if (!cursor.hasSelection()) return;
    const int across = horizontalScrollBar()->value();
    const int down = verticalScrollBar()->value();
    cursor.setPosition(cursor.selectionStart());
    setTextCursor(cursor);
    horizontalScrollBar()->setValue(across);
    verticalScrollBar()->setValue(down);
}

void ProgramText::SelectLine(int line) {
    const QTextBlock block = line > 0 ? document()->findBlockByNumber(line - 1) : QTextBlock();
    if (!block.isValid()) {
        ClearSelection();
        return;
    }
    // The caret goes to the line's beginning, so that a long line is not scrolled to its end.
    QTextCursor cursor = textCursor();
    cursor.setPosition(block.position() + block.length() - 1);
    cursor.setPosition(block.position(), QTextCursor::KeepAnchor);
    setTextCursor(cursor);
}

// Tab types a tab and Enter ends the line, whatever the shift state. The toolkit's own line separator, which Shift with
// Enter would type, is no line end to the program.
void ProgramText::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab)
        ReplaceSelection(u"\t");
    else if (event->matches(QKeySequence::InsertLineSeparator))
        ReplaceSelection(u"\r\n");
    else
        QPlainTextEdit::keyPressEvent(event);
}

QMimeData* ProgramText::createMimeDataFromSelection() const {
    auto* plainText = new QMimeData;
    plainText->setText(QString::fromStdU16String(SelectedText()));
    return plainText;
}

// In the document a line end is one character; before a position there are as many as the number of its line.
int ProgramText::FromDocument(int position) const {
    return position + document()->findBlock(position).blockNumber();
}

int ProgramText::ToDocument(int position) const {
    int first = 0;
    int last = document()->blockCount() - 1;
    while (first < last) {
        const int middle = (first + last + 1) / 2;
        if (document()->findBlockByNumber(middle).position() + middle <= position)
            first = middle;
        else
            last = middle - 1;
    }
    const QTextBlock block = document()->findBlockByNumber(first);
    const int column = std::clamp(position - first - block.position(), 0, block.length() - 1);
    return block.position() + column;
}

}  // namespace platform
