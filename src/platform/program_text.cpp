#include "platform/program_text.h"

#include <QApplication>
#include <QDrag>
#include <QKeyEvent>
#include <QMimeData>
#include <QScrollBar>
#include <QTextBlock>
#include <QUrl>
#include <algorithm>

#include "platform/clipboard.h"
#include "platform/fonts.h"
#include "platform/keys.h"

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

// Plain text of other programs. What the assembler knows no more than the eye can see is made a blank or a line end.
std::u16string FromPlainText(const QString& text) {
    std::u16string characters = text.toStdU16String();
    for (char16_t& character : characters) {
        const bool noBreakSpace = character == u'\u00A0' || character == u'\u2007' || character == u'\u202F';
        const bool lineEnd = character == u'\u2028' || character == u'\u2029';
        if (noBreakSpace) character = u' ';
        if (lineEnd) character = u'\n';
    }
    return characters;
}

QString DroppedFile(const QDropEvent& event) {
    const QList<QUrl> files = event.mimeData()->urls();
    return files.size() == 1 ? files.front().toLocalFile() : QString();
}

// True if files are dragged and not text. Only one is accepted, and it stays where it is.
bool AnswerFiles(QDropEvent& event) {
    if (!event.mimeData()->hasUrls()) return false;
    event.setDropAction(Qt::CopyAction);
    event.setAccepted(!DroppedFile(event).isEmpty());
    return true;
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
    connect(this, &QPlainTextEdit::selectionChanged, this, [this] { selectionIsForTheEye_ = false; });
}

std::u16string ProgramText::Text() const {
    return WithLineEnds(document()->toRawText());
}

int ProgramText::Length() const {
    return FromDocument(document()->characterCount() - 1);
}

void ProgramText::SetText(std::u16string_view text) {
    setPlainText(ToDocumentText(text));
    inserted_ = 0;
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
    if (text.empty() && !textCursor().hasSelection()) return;
    BeginStep();
    QTextCursor cursor = textCursor();
    cursor.insertText(ToDocumentText(text));
    setTextCursor(cursor);
    EndStep(text.size());
}

void ProgramText::InsertAt(const std::vector<std::size_t>& positions, std::u16string_view text) {
    if (positions.empty()) return;
    BeginStep();
    QTextCursor cursor = textCursor();
    cursor.beginEditBlock();
    const QString insertion = ToDocumentText(text);
    for (auto position = positions.rbegin(); position != positions.rend(); ++position) {
        cursor.setPosition(ToDocument(static_cast<int>(*position)));
        cursor.insertText(insertion);
    }
    cursor.endEditBlock();
    EndStep(positions.size() * text.size());
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
    // Each place that the caret goes to is scrolled into view.
    constexpr int linesBelow = 3;
    setTextCursor(QTextCursor(document()->findBlockByNumber(std::min(line - 1 + linesBelow, blockCount() - 1))));
    // It ends at the line's beginning, so that a long line is not scrolled to its end.
    QTextCursor cursor = textCursor();
    cursor.setPosition(block.position() + block.length() - 1);
    cursor.setPosition(block.position(), QTextCursor::KeepAnchor);
    setTextCursor(cursor);
    selectionIsForTheEye_ = true;
}

// Tab types a tab and Enter ends the line, whatever the shift state. Qt's own line separator, which Shift with
// Enter would type, is not a line end to the program. A letter with Alt is meant for a command, and types nothing where
// that is disabled.
void ProgramText::keyPressEvent(QKeyEvent* event) {
    if (IsAltCharacter(*event)) {
        event->ignore();
    } else if (event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab) {
        insertPlainText("\t");
        ensureCursorVisible();
    } else if (event->matches(QKeySequence::InsertLineSeparator)) {
        insertPlainText("\n");
        ensureCursorVisible();
    } else if (event->keyCombination() == (Qt::ControlModifier | Qt::Key_Y)) {
        redo();
    } else {
        QPlainTextEdit::keyPressEvent(event);
    }
}

void ProgramText::dragEnterEvent(QDragEnterEvent* event) {
    if (!AnswerFiles(*event)) QPlainTextEdit::dragEnterEvent(event);
}

void ProgramText::dragMoveEvent(QDragMoveEvent* event) {
    if (!AnswerFiles(*event)) QPlainTextEdit::dragMoveEvent(event);
}

// Qt makes one step of taking a text from one place and putting it to another, within which no step can begin.
void ProgramText::dropEvent(QDropEvent* event) {
    if (!AnswerFiles(*event)) {
        BeginStep();
        QPlainTextEdit::dropEvent(event);
    } else if (event->isAccepted()) {
        emit FileDropped(DroppedFile(*event));
    }
}

bool ProgramText::IsInSelection(const QPoint& place) const {
    const QTextCursor selection = textCursor();
    const int position = cursorForPosition(place).position();
    return selection.hasSelection() && position >= selection.selectionStart() && position < selection.selectionEnd();
}

// Qt would take a text away that another program says it has moved. Here it is moved inside the editor, and copied to
// everywhere else.
void ProgramText::DragSelection() {
    pressInSelection_.reset();
    auto* drag = new QDrag(viewport());
    drag->setMimeData(createMimeDataFromSelection());
    drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::MoveAction);
}

void ProgramText::mousePressEvent(QMouseEvent* event) {
    const bool isThirdClick =
        sinceDoubleClick_.isValid() && !sinceDoubleClick_.hasExpired(QApplication::doubleClickInterval());
    const bool isPlain = event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier && !isThirdClick;
    const QPoint place = event->position().toPoint();
    if (!isPlain || !IsInSelection(place)) return QPlainTextEdit::mousePressEvent(event);
    if (selectionIsForTheEye_) {
        setTextCursor(cursorForPosition(place));
        QPlainTextEdit::mousePressEvent(event);
    } else {
        pressInSelection_ = place;
    }
}

void ProgramText::mouseMoveEvent(QMouseEvent* event) {
    if (!pressInSelection_) return QPlainTextEdit::mouseMoveEvent(event);
    const QPoint way = event->position().toPoint() - *pressInSelection_;
    if (way.manhattanLength() >= QApplication::startDragDistance()) DragSelection();
}

void ProgramText::mouseReleaseEvent(QMouseEvent* event) {
    if (!pressInSelection_) return QPlainTextEdit::mouseReleaseEvent(event);
    pressInSelection_.reset();
    setTextCursor(cursorForPosition(event->position().toPoint()));
}

void ProgramText::mouseDoubleClickEvent(QMouseEvent* event) {
    pressInSelection_.reset();
    sinceDoubleClick_.start();
    QPlainTextEdit::mouseDoubleClickEvent(event);
}

QMimeData* ProgramText::createMimeDataFromSelection() const {
    return MakeRichText(SelectedText());
}

// What Shift+Insert, the context menu and the mouse bring.
void ProgramText::insertFromMimeData(const QMimeData* source) {
    if (source->hasText()) ReplaceSelection(FromPlainText(source->text()));
}

// Qt joins a change to the step before it while the document counts as modified. What can be undone grows
// without bound, and it can only be forgotten whole: before a step, so that the latest one is always there.
void ProgramText::BeginStep() {
    constexpr std::size_t mostInserted = 2'000'000;
    document()->setModified(false);
    if (inserted_ > mostInserted) ForgetSteps();
}

void ProgramText::EndStep(std::size_t inserted) {
    document()->setModified(false);
    inserted_ += inserted;
}

// The document frees the memory only when its text is set again. To everyone else nothing has changed.
void ProgramText::ForgetSteps() {
    const QSignalBlocker noChange(this);
    const int anchor = textCursor().anchor();
    const int position = textCursor().position();
    const int across = horizontalScrollBar()->value();
    const int down = verticalScrollBar()->value();
    setPlainText(document()->toRawText());
    QTextCursor cursor = textCursor();
    cursor.setPosition(anchor);
    cursor.setPosition(position, QTextCursor::KeepAnchor);
    setTextCursor(cursor);
    horizontalScrollBar()->setValue(across);
    verticalScrollBar()->setValue(down);
    inserted_ = 0;
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
