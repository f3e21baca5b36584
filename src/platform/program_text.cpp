#include "platform/program_text.h"

#include <QApplication>
#include <QDrag>
#include <QFileInfo>
#include <QInputMethod>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextLayout>
#include <QUrl>
#include <algorithm>

#include "platform/clipboard.h"
#include "platform/document_text.h"
#include "platform/fonts.h"
#include "platform/keys.h"
#include "platform/menu.h"
#include "platform/palette.h"
#include "platform/tip.h"

namespace platform {

namespace {

QString DroppedFile(const QDropEvent& event) {
    const QList<QUrl> files = event.mimeData()->urls();
    const QString file = files.size() == 1 ? QDir::toNativeSeparators(files.front().toLocalFile()) : QString();
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

ProgramText::ProgramText(QWidget* parent)
    : QPlainTextEdit(parent), marks_(*document()), margin_(new LineMargin(*this)) {
    setObjectName("txtCode");
    setAccessibleName("Program text");
    setFont(CourierNew(11.25));
    setLineWrapMode(NoWrap);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setTabStopDistance(8 * fontMetrics().horizontalAdvance(' '));
    setViewportMargins(LineMargin::Width, 0, 0, 0);
    connect(document(), &QTextDocument::contentsChange, this,
            [this](int position, int, int added) { changes_.Note(position, added); });
    connect(this, &QPlainTextEdit::textChanged, this, &ProgramText::FinishChange);
    connect(this, &QPlainTextEdit::updateRequest, margin_, &LineMargin::Follow);
    connect(this, &QPlainTextEdit::selectionChanged, this, [this] {
        selectionIsForTheEye_ = false;
        pressInSelection_.reset();
    });
}

std::u16string ProgramText::Text() const {
    return FromDocumentText(document()->toRawText(), u"\r\n");
}

int ProgramText::Length() const {
    return FromDocument(*document(), document()->characterCount() - 1);
}

void ProgramText::SetText(std::u16string_view text) {
    changes_.SetText(text);
    inserted_ = 0;
}

int ProgramText::SelectionStart() const {
    return FromDocument(*document(), textCursor().selectionStart());
}

void ProgramText::SetSelectionStart(int position) {
    const int start = ToDocument(*document(), position);
    Select(start, start);
}

void ProgramText::SetSelectionLength(int characters) {
    Select(textCursor().selectionStart(), ToDocument(*document(), SelectionStart() + characters));
}

std::u16string ProgramText::SelectedText() const {
    return FromDocumentText(textCursor().selectedText(), u"\r\n");
}

bool ProgramText::ReplaceSelection(std::u16string_view text) {
    if (text.empty() && !textCursor().hasSelection()) return true;
    if (!isMoving_ && Refuses(text)) return false;
    BeginStep();
    QTextCursor cursor = textCursor();
    cursor.insertText(ToDocumentText(text));
    setTextCursor(cursor);
    EndStep(text.size());
    return true;
}

// Tells why the selection must not be replaced by this. What is refused so is never there: nothing is to be undone.
bool ProgramText::Refuses(std::u16string_view text) {
    const std::string problem = changes_.FindProblem(text);
    if (!problem.empty()) emit Refused(QString::fromStdString(problem));
    return !problem.empty();
}

void ProgramText::FinishChange() {
    const std::optional<std::string> problem = changes_.Finish();
    if (!problem) return;
    isRefused_ = !problem->empty();
    if (isRefused_) {
        marks_.Restore();
        notes_.Restore();
        if (beforeKey_) Select(beforeKey_->first, beforeKey_->second);
        emit Refused(QString::fromStdString(*problem));
        return;
    }
    lineToSelect_.reset();
    const bool isMarkGone = marks_.Follow(textCursor().position());
    notes_.Follow();
    margin_->ShowMarks();
    if (isMarkGone) emit MarksChanged();
    emit TextChanged();
}

void ProgramText::InsertAt(const std::vector<std::size_t>& positions, std::u16string_view text) {
    if (positions.empty()) return;
    BeginStep();
    QTextCursor cursor = textCursor();
    cursor.beginEditBlock();
    const QString insertion = ToDocumentText(text);
    for (auto position = positions.rbegin(); position != positions.rend(); ++position) {
        cursor.setPosition(ToDocument(*document(), static_cast<int>(*position)));
        cursor.insertText(insertion);
    }
    cursor.endEditBlock();
    EndStep(positions.size() * text.size());
    SetSelectionStart(static_cast<int>(positions.back() + positions.size() * text.size()));
}

bool ProgramText::ReplaceLines(std::u16string_view text) {
    isRefused_ = false;
    BeginStep();
    std::size_t inserted = 0;
    QTextCursor cursor(document());
    cursor.beginEditBlock();
    for (const QString& line : ToDocumentText(text).split("\r\n")) {
        if (cursor.block().text() != line) {
            cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
            cursor.insertText(line);
            inserted += static_cast<std::size_t>(line.size());
        }
        if (!cursor.movePosition(QTextCursor::NextBlock)) break;
    }
    cursor.endEditBlock();
    EndStep(inserted);
    return !isRefused_;
}

void ProgramText::ClearSelection() {
    if (WaitsForMenu(0)) return;
    if (!textCursor().hasSelection()) return;
    const int across = horizontalScrollBar()->value();
    const int down = verticalScrollBar()->value();
    const int start = textCursor().selectionStart();
    Select(start, start);
    horizontalScrollBar()->setValue(across);
    verticalScrollBar()->setValue(down);
}

void ProgramText::SelectLine(int line) {
    if (WaitsForMenu(line)) return;
    const QTextBlock block = line > 0 ? document()->findBlockByNumber(line - 1) : QTextBlock();
    if (!block.isValid()) {
        ClearSelection();
        return;
    }
    // Each place that the caret goes to is scrolled into view.
    constexpr int linesBelow = 3;
    setTextCursor(QTextCursor(document()->findBlockByNumber(std::min(line - 1 + linesBelow, blockCount() - 1))));
    // It ends at the line's beginning, so that a long line is not scrolled to its end.
    Select(block.position() + block.length() - 1, block.position());
    selectionIsForTheEye_ = true;
    emit LineShown();
}

void ProgramText::ScrollToLine(int line) {
    const int linesInView = verticalScrollBar()->pageStep();
    const int above = line - 1 - verticalScrollBar()->value();
    if (above < 0 || above >= linesInView) verticalScrollBar()->setValue(line - 1 - linesInView / 2);
}

// The caret that Qt finds stands before or after the character under the mouse, whichever end is nearer.
bool ProgramText::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QPlainTextEdit::viewportEvent(event);
    const QPoint mouse = static_cast<QHelpEvent*>(event)->pos();
    const QTextCursor caret = cursorForPosition(mouse);
    const QRect place = cursorRect(caret);
    QString tip = notes_.At(mouse);
    if (tip.isEmpty() && tips_ && mouse.y() <= place.bottom()) {
        const int column = caret.positionInBlock() - (place.left() > mouse.x() ? 1 : 0);
        tip = tips_(caret.blockNumber() + 1, caret.block().text(), std::max(0, column));
    }
    const QPoint besideMouse(mouse.x(), place.top());
    ShowTip({viewport()->mapToGlobal(besideMouse), place.size()}, tip, *viewport());
    return true;
}

void ProgramText::ToggleMark(int line) {
    marks_.Toggle(line);
    ShowMarks();
}

void ProgramText::ClearMarks() {
    marks_.Clear();
    ShowMarks();
}

void ProgramText::KeepLineNumbers() {
    marks_.KeepNumbers();
    emit MarksChanged();
}

void ProgramText::ShowMarks() {
    margin_->ShowMarks();
    viewport()->update();
    emit MarksChanged();
}

int ProgramText::LineAt(int y) const {
    const QTextBlock block = cursorForPosition({0, y}).block();
    const QRectF place = blockBoundingGeometry(block).translated(contentOffset());
    return y <= place.bottom() ? block.blockNumber() + 1 : 0;
}

std::vector<QRectF> ProgramText::VisibleMarkedLines() const {
    std::vector<QRectF> places;
    if (marks_.IsEmpty()) return places;
    for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
        QRectF place = blockBoundingGeometry(block).translated(contentOffset());
        if (place.top() > viewport()->height()) break;
        place.setLeft(0);
        place.setRight(viewport()->width());
        if (marks_.Has(block.blockNumber() + 1)) places.push_back(place);
    }
    return places;
}

void ProgramText::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    for (const QRectF& line : VisibleMarkedLines()) painter.fillRect(line, MarkGround);
    painter.end();
    QPlainTextEdit::paintEvent(event);
    notes_.Paint(event->rect());
}

void ProgramText::resizeEvent(QResizeEvent* event) {
    QPlainTextEdit::resizeEvent(event);
    const QRect inside = contentsRect();
    margin_->setGeometry(inside.left(), inside.top(), LineMargin::Width, viewport()->height());
}

// A menu is about the place at which it was opened. What a run selects meanwhile is selected afterwards.
bool ProgramText::WaitsForMenu(int line) {
    if (openMenus_ > 0) lineToSelect_ = line;
    return openMenus_ > 0;
}

void ProgramText::EndMenu() {
    --openMenus_;
    if (const auto line = std::exchange(lineToSelect_, std::nullopt)) SelectLine(*line);
}

// The caret goes where the menu is opened by the mouse, as by a click, but to a selection that the menu is about.
void ProgramText::contextMenuEvent(QContextMenuEvent* event) {
    const bool isByMouse = event->reason() == QContextMenuEvent::Mouse;
    if (isByMouse && !IsInSelection(event->pos())) setTextCursor(cursorForPosition(event->pos()));
    menuLine_ = (isByMouse ? cursorForPosition(event->pos()) : textCursor()).blockNumber() + 1;
    ++openMenus_;
    emit MenuOpening();
    QMenu* menu = createStandardContextMenu(event->pos());
    // After what has been chosen, for which the menu is hidden first.
    connect(menu, &QMenu::aboutToHide, this, &ProgramText::EndMenu, Qt::QueuedConnection);
    OpenMenu(menu, actions(), event->globalPos());
}

// Tab types a tab and Enter ends the line, whatever the shift state. Qt's own line separator, which Shift with
// Enter would type, is not a line end to the program. A letter with Alt is meant for a command, and types nothing where
// that is disabled.
void ProgramText::keyPressEvent(QKeyEvent* event) {
    HideTip();
    EndComposition();
    const QString typed = event->text();
    const bool isText = !typed.isEmpty() && (typed.front().isPrint() || typed.front().isSpace());
    if (IsAltCharacter(*event)) {
        event->ignore();
    } else if (isText && Refuses(typed.toStdU16String())) {
        event->accept();
    } else if (event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab) {
        insertPlainText("\t");
        ensureCursorVisible();
    } else if (event->matches(QKeySequence::InsertLineSeparator)) {
        insertPlainText("\n");
        ensureCursorVisible();
    } else {
        const QTextCursor caret = textCursor();
        const QScopedValueRollback key(beforeKey_, {{caret.anchor(), caret.position()}});
        QPlainTextEdit::keyPressEvent(event);
    }
}

// What an input method has composed is put in or given up before anything else is done. Qt would look for places that
// the text does not have.
void ProgramText::EndComposition() {
    const auto isComposing = [this] {
        const QTextLayout* layout = textCursor().block().layout();  // none was seen once, and not understood
        return layout != nullptr && !layout->preeditAreaText().isEmpty();
    };
    if (!isComposing()) return;
    QGuiApplication::inputMethod()->commit();
    QInputMethodEvent end;
    if (isComposing()) QCoreApplication::sendEvent(this, &end);
}

// What is only being composed is not in the text yet, and a text that is refused still ends its composition. Qt takes
// both for a change.
void ProgramText::inputMethodEvent(QInputMethodEvent* event) {
    const std::u16string text = event->commitString().toStdU16String();
    const bool isRefused = !text.empty() && Refuses(text);
    const bool comesIn = !text.empty() || event->replacementLength() > 0 || textCursor().hasSelection();
    const bool changesText = comesIn && !isRefused;
    const QSignalBlocker noChange(changesText ? nullptr : this);
    if (isRefused)
        event->setCommitString({});
    else
        event->setCommitString(ToDocumentText(text), event->replacementStart(), event->replacementLength());
    QPlainTextEdit::inputMethodEvent(event);
    if (!changesText) changes_.Forget();
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
        const QScopedValueRollback moving(isMoving_, event->source() == viewport());
        BeginStep();
        if (isMoving_ && event->dropAction() == Qt::MoveAction) marks_.Lift(textCursor());
        QPlainTextEdit::dropEvent(event);
        marks_.Lift({});
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
    pressInSelection_.reset();  // its release may have come to a box
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
    EndComposition();
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
    notes_.StayThrough([this] { setPlainText(document()->toRawText()); });
    changes_.Forget();
    marks_.Restore();
    Select(anchor, position);
    horizontalScrollBar()->setValue(across);
    verticalScrollBar()->setValue(down);
    inserted_ = 0;
}

void ProgramText::Select(int anchor, int position) {
    EndComposition();
    QTextCursor cursor = textCursor();
    cursor.setPosition(anchor);
    cursor.setPosition(position, QTextCursor::KeepAnchor);
    setTextCursor(cursor);
}

}  // namespace platform
