#include "platform/program_text.h"

#include <QApplication>
#include <QDrag>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMimeData>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTextBlock>
#include <QUrl>
#include <algorithm>

#include "platform/clipboard.h"
#include "platform/fonts.h"
#include "platform/keys.h"

namespace platform {

namespace {

// The document keeps three characters for itself, as separators of its parts. In it others stand for them, which no
// text has: halves of surrogate pairs.
constexpr std::pair<char16_t, char16_t> standIns[] = {{u'\u2029', 0xDC29}, {u'\uFDD0', 0xDCD0}, {u'\uFDD1', 0xDCD1}};

// A stretch of the document's raw text, which ends its lines in paragraph separators.
std::u16string FromDocumentText(QStringView raw, std::u16string_view lineEnd) {
    std::u16string text;
    text.reserve(static_cast<std::size_t>(raw.size()) + static_cast<std::size_t>(raw.size() / 8));
    for (const QChar character : raw) {
        if (character == QChar::ParagraphSeparator) {
            text += lineEnd;
            continue;
        }
        text += character.unicode();
        if (!character.isLowSurrogate()) continue;
        for (const auto& [own, standIn] : standIns)
            if (character == standIn) text.back() = own;
    }
    return text;
}

QString ToDocumentText(std::u16string_view text) {
    QString characters = QStringView(text).toString();
    for (QChar& character : characters)
        for (const auto& [own, standIn] : standIns)
            if (character == own) character = standIn;
    return characters;
}

QString DroppedFile(const QDropEvent& event) {
    const QList<QUrl> files = event.mimeData()->urls();
    const QString file = files.size() == 1 ? files.front().toLocalFile() : QString();
    return QFileInfo(file).isFile() ? file : QString();
}

// True if files are dragged and not text. Only one is accepted, which is not a folder, and it stays where it is.
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
    connect(document(), &QTextDocument::contentsChange, this, &ProgramText::NoteChange);
    connect(this, &QPlainTextEdit::textChanged, this, &ProgramText::FinishChange);
    connect(this, &QPlainTextEdit::selectionChanged, this, [this] { selectionIsForTheEye_ = false; });
}

std::u16string ProgramText::Text() const {
    return FromDocumentText(document()->toRawText(), u"\r\n");
}

int ProgramText::Length() const {
    return FromDocument(document()->characterCount() - 1);
}

void ProgramText::SetText(std::u16string_view text) {
    setPlainText(ToDocumentText(rules_.Plain ? rules_.Plain(text) : text));
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
    return FromDocumentText(textCursor().selectedText(), u"\r\n");
}

void ProgramText::ReplaceSelection(std::u16string_view text) {
    if (text.empty() && !textCursor().hasSelection()) return;
    Change(text.size(), [this, text] {
        BeginStep();
        QTextCursor cursor = textCursor();
        cursor.insertText(ToDocumentText(PlainAt(cursor.selectionStart(), text)));
        setTextCursor(cursor);
        EndStep(text.size());
    });
}

// What the text becomes behind what stands before it on its line: a long one is faster made plain before it is there.
std::u16string ProgramText::PlainAt(int position, std::u16string_view text) const {
    if (!rules_.Plain) return std::u16string(text);
    const QTextBlock block = document()->findBlock(position);
    std::u16string before = FromDocumentText(block.text().left(position - block.position()), {});
    return rules_.Plain(before + std::u16string(text)).substr(rules_.Plain(before).size());
}

void ProgramText::NoteChange(int position, int, int added) {
    firstChanged_ = std::min(firstChanged_, position);
    endOfChanged_ = std::max(endOfChanged_, position + added);
}

void ProgramText::FinishChange() {
    // Undoing brings back what was there.
    if (rules_.Plain && !document()->isRedoAvailable()) MakePlain();
    ForgetChange();
    emit TextChanged();
}

void ProgramText::ForgetChange() {
    firstChanged_ = std::numeric_limits<int>::max();
    endOfChanged_ = 0;
}

// The lines that have changed, from the last to the first. The caret stays
// between the characters where it was.
void ProgramText::MakePlain() {
    const QSignalBlocker partOfTheChange(this);
    const QTextBlock first = document()->findBlock(firstChanged_);
    const int end = std::min(endOfChanged_, document()->characterCount() - 1);
    for (QTextBlock block = document()->findBlock(end); block.isValid(); block = block.previous()) {
        const std::u16string line = FromDocumentText(block.text(), {});
        const std::u16string plain = rules_.Plain(line);
        if (plain != line) PutInPlaceOf(block, line, plain);
        if (block == first) return;
    }
}

void ProgramText::PutInPlaceOf(const QTextBlock& block, std::u16string_view line, std::u16string_view plain) {
    const auto same = static_cast<int>(std::ranges::mismatch(line, plain).in1 - line.begin());
    const auto tail = std::min(line.size(), plain.size()) - static_cast<std::size_t>(same);
    const auto endings =
        std::mismatch(line.rbegin(), line.rbegin() + static_cast<std::ptrdiff_t>(tail), plain.rbegin());
    const auto sameAtEnd = static_cast<int>(endings.first - line.rbegin());
    const int start = block.position() + same;
    const int end = block.position() + static_cast<int>(line.size()) - sameAtEnd;
    const int grown = static_cast<int>(plain.size()) - static_cast<int>(line.size());
    const auto moved = [=](int position) {
        return position <= start ? position : std::max(start, std::max(position, end) + grown);
    };
    const int anchor = moved(textCursor().anchor());
    const int caret = moved(textCursor().position());
    QTextCursor cursor(document());
    cursor.joinPreviousEditBlock();
    cursor.setPosition(start);
    cursor.setPosition(end, QTextCursor::KeepAnchor);
    cursor.insertText(ToDocumentText(
        plain.substr(static_cast<std::size_t>(same), plain.size() - static_cast<std::size_t>(same + sameAtEnd))));
    cursor.endEditBlock();
    cursor.setPosition(anchor);
    cursor.setPosition(caret, QTextCursor::KeepAnchor);
    setTextCursor(cursor);
}

// Whether a change at the selection, which may also take away the line end before or behind it, has to be looked at.
bool ProgramText::MayBecomeTooLong(std::size_t inserted) const {
    if (!rules_.IsTooLong) return false;
    const QTextBlock first = document()->findBlock(textCursor().selectionStart());
    const QTextBlock last = document()->findBlock(textCursor().selectionEnd());
    const int around = first.previous().length() + first.length() + last.length() + last.next().length();
    constexpr int mostOfAKey = 100;
    const auto most =
        static_cast<int>(std::min<std::size_t>(inserted, std::numeric_limits<int>::max() / 2)) + mostOfAKey;
    return around + most > rules_.LongestLine || Length() + most > rules_.SafeLength;
}

bool ProgramText::HasBecomeTooLong(int lengthBefore) const {
    const int end = std::min(endOfChanged_, document()->characterCount() - 1);
    for (QTextBlock block = document()->findBlock(firstChanged_); block.isValid() && block.position() <= end;
         block = block.next())
        if (block.length() - 1 > rules_.LongestLine) return true;
    return Length() > std::max(rules_.SafeLength, lengthBefore) && rules_.IsTooLong(Text());
}

// Makes a change, or takes it back where the text has become too long. A change inside another is part of that.
void ProgramText::Change(std::size_t inserted, const std::function<void()>& change) {
    if (isChanging_ || !MayBecomeTooLong(inserted)) return change();
    const QScopedValueRollback changing(isChanging_, true);
    const int revision = document()->revision();
    const int length = Length();
    bool isRefused = false;
    {
        const QSignalBlocker notYet(this);
        BeginStep();
        change();
        if (document()->revision() == revision) return;
        isRefused = HasBecomeTooLong(length);
        if (isRefused) undo();
    }
    if (!isRefused) return FinishChange();
    document()->clearUndoRedoStacks(QTextDocument::RedoStack);
    ForgetChange();
    emit Refused();
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
void ProgramText::TypeKey(QKeyEvent* event) {
    if (event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab) {
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

void ProgramText::keyPressEvent(QKeyEvent* event) {
    const bool mayChange = !event->text().isEmpty() || event->key() == Qt::Key_Delete;
    if (IsAltCharacter(*event))
        event->ignore();
    else if (mayChange)
        Change(0, [this, event] { TypeKey(event); });
    else
        TypeKey(event);
}

void ProgramText::inputMethodEvent(QInputMethodEvent* event) {
    const auto length = static_cast<std::size_t>(event->commitString().size());
    Change(length, [this, event] { QPlainTextEdit::inputMethodEvent(event); });
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
        const auto atAnyPlace = static_cast<std::size_t>(rules_.LongestLine);
        Change(atAnyPlace, [this, event] {
            BeginStep();
            QPlainTextEdit::dropEvent(event);
        });
    } else if (event->isAccepted()) {
        emit FileDropped(DroppedFile(*event));
    }
}

// To Qt, too, the place where the selection ends is in it, which is the right half of its last character and all that
// is to the right of it.
bool ProgramText::IsInSelection(const QPoint& place) const {
    const QTextCursor selection = textCursor();
    const int position = cursorForPosition(place).position();
    return selection.hasSelection() && position >= selection.selectionStart() && position <= selection.selectionEnd();
}

// Shift extends the selection, and a third click selects the line.
bool ProgramText::MayDrag(const QMouseEvent& press) const {
    const bool isThirdClick =
        sinceDoubleClick_.isValid() && !sinceDoubleClick_.hasExpired(QApplication::doubleClickInterval()) &&
        (press.position().toPoint() - doubleClick_).manhattanLength() < QApplication::startDragDistance();
    return press.button() == Qt::LeftButton && press.modifiers() != Qt::ShiftModifier && !isThirdClick &&
           IsInSelection(press.position().toPoint());
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
    const QPoint place = event->position().toPoint();
    if (!MayDrag(*event)) return QPlainTextEdit::mousePressEvent(event);
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
    doubleClick_ = event->position().toPoint();
    sinceDoubleClick_.start();
    QPlainTextEdit::mouseDoubleClickEvent(event);
}

QMimeData* ProgramText::createMimeDataFromSelection() const {
    return MakeRichText(SelectedText());
}

// What Shift+Insert, the context menu and the mouse bring.
void ProgramText::insertFromMimeData(const QMimeData* source) {
    if (source->hasText()) ReplaceSelection(source->text().toStdU16String());
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
