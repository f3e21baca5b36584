#include "platform/line_notes.h"

#include <QPainter>
#include <QPlainTextEdit>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <algorithm>
#include <ranges>
#include <utility>

#include "platform/fonts.h"
#include "platform/palette.h"

namespace platform {

namespace {

constexpr int gap = 12;  // between a line and its note
constexpr int leastGap = 2;
constexpr int sliver = 8;  // what is left at least of a grey note, in its colour alone
constexpr int padding = 4;
constexpr int leastWidth = 200;  // of a note that is cut off

constexpr int gone = -1;  // in the place of a line

QColor GroundOf(LineNote::Kind kind) {
    switch (kind) {
        case LineNote::Kind::Good: return GoodNoteGround;
        case LineNote::Kind::Neutral:
        case LineNote::Kind::Hint: return NeutralNoteGround;
        case LineNote::Kind::Bad: break;
    }
    return BadNoteGround;
}

// Stays with a block wherever a change moves it. A cursor would not do: Qt goes on using one that is destroyed where it
// tells of the change that clears a text.
struct BlockAnchor : QTextBlockUserData {
    explicit BlockAnchor(int number) : Number(number) {}
    const int Number;
};

}  // namespace

LineNotes::LineNotes(QPlainTextEdit& editor) : editor_(editor), font_(SansSerif(8.25)) {
    QScrollBar* bar = editor.horizontalScrollBar();
    connect(editor.document(), &QTextDocument::contentsChange, this,
            [this](int position, int, int added) { NoteChange(position, added); });
    connect(bar, &QScrollBar::rangeChanged, this, [this](int, int maximum) { WidenScrolling(maximum); });
    // What is in view already is moved and not painted again, but where a note is cut off stays.
    connect(bar, &QScrollBar::valueChanged, this, [this] {
        if (!notes_.empty()) editor_.viewport()->update();
    });
}

void LineNotes::Show(const std::vector<LineNote>& notes) {
    if (notes.empty() && notes_.empty()) return;
    notes_.clear();
    lost_.clear();
    lines_ = editor_.blockCount();
    extent_ = 0;
    const QFontMetrics metrics(font_);
    for (const LineNote& note : notes) {
        const QTextBlock line = editor_.document()->findBlockByNumber(note.Line - 1);
        if (!line.isValid()) continue;
        Shown& shown = notes_.emplace_back(line.blockNumber(), line.blockNumber(), line.text(), note.Text, note.What,
                                           metrics.horizontalAdvance(note.Text) + 2 * padding);
        Anchor(shown);
        const int end = EndOfLine(shown).right() + editor_.horizontalScrollBar()->value();
        extent_ = std::max(extent_, end + gap + std::min(leastWidth, shown.Width));
    }
    Describe();
    WidenScrolling(textMaximum_);
    editor_.viewport()->update();
}

void LineNotes::ShowBesideHints(std::vector<LineNote> notes) {
    for (const Shown& note : notes_)
        if (note.What == LineNote::Kind::Hint && std::ranges::count(notes, note.Line + 1, &LineNote::Line) == 0)
            notes.push_back({note.Line + 1, note.Text, note.What});
    std::ranges::sort(notes, {}, &LineNote::Line);
    Show(notes);
}

void LineNotes::StayThrough(const std::function<void()>& change) {
    std::vector<Shown> notes = std::exchange(notes_, {});
    change();
    notes_ = std::move(notes);
    for (Shown& note : notes_) Anchor(note);
    WidenScrolling(textMaximum_);
}

void LineNotes::Follow() {
    lost_.clear();
    for (Shown& note : notes_) note.LineBefore = note.Line;
}

void LineNotes::Restore() {
    std::ranges::move(std::exchange(lost_, {}), std::back_inserter(notes_));
    lines_ = editor_.blockCount();
    for (Shown& note : notes_) note.Line = note.LineBefore;
    std::ranges::sort(notes_, {}, &Shown::Line);
    for (Shown& note : notes_) Anchor(note);
    Describe();
    editor_.viewport()->update();
}

// A line that the change may have touched has to be found again. Of two lines that have become one, one note stays.
void LineNotes::NoteChange(int position, int added) {
    if (notes_.empty()) return;
    const QTextDocument& text = *editor_.document();
    const int more = text.blockCount() - std::exchange(lines_, text.blockCount());
    const QTextBlock first = text.findBlock(position);
    const QTextBlock last = text.findBlock(std::min(position + added, text.characterCount() - 1));
    const auto from = std::ranges::lower_bound(notes_, first.blockNumber(), {}, &Shown::Line);
    const auto to = std::ranges::upper_bound(from, notes_.end(), last.blockNumber() - more, {}, &Shown::Line);
    for (auto below = to; below != notes_.end(); ++below) below->Line += more;
    FindAgain({from, to}, first, last, more);
    for (int before = gone; Shown & note : notes_) {
        if (note.Line == std::exchange(before, note.Line)) note.Line = gone;
        if (note.Line == gone) lost_.push_back(std::move(note));
    }
    if (std::erase_if(notes_, [](const Shown& note) { return note.Line == gone; }) > 0) editor_.viewport()->update();
    Describe();
}

// In these lines: where its block is now, or as far from the beginning of the text as before, or as far from its end.
// Where a line has been split at its beginning, its text is in one of the blocks below its own.
void LineNotes::FindAgain(std::span<Shown> notes, const QTextBlock& first, const QTextBlock& last, int more) {
    const auto isAt = [&](int line, const Shown& note) {
        return line >= first.blockNumber() && line <= last.blockNumber() &&
               editor_.document()->findBlockByNumber(line).text() == note.TextOfLine;
    };
    for (Shown& note : notes)
        if (!isAt(note.Line, note)) note.Line = isAt(note.Line + more, note) ? note.Line + more : gone;
    auto sought = notes.end();
    for (QTextBlock block = first; block.isValid() && block.blockNumber() <= last.blockNumber(); block = block.next()) {
        if (const auto* anchor = static_cast<const BlockAnchor*>(block.userData()))
            sought = std::ranges::find(notes, anchor->Number, &Shown::Anchor);
        if (sought == notes.end() || block.text() != sought->TextOfLine) continue;
        sought->Line = block.blockNumber();
        sought = notes.end();
    }
    std::ranges::sort(notes, {}, &Shown::Line);
    for (Shown& note : notes)
        if (note.Line != gone) Anchor(note);
}

void LineNotes::Anchor(Shown& note) {
    note.Anchor = ++anchors_;
    editor_.document()->findBlockByNumber(note.Line).setUserData(new BlockAnchor(note.Anchor));
}

void LineNotes::Describe() {
    constexpr int mostTold = 8;
    QStringList told;
    for (const Shown& note : notes_ | std::views::take(mostTold))
        told += "Line " + QString::number(note.Line + 1) + ": " + note.Text;
    const QString description = told.join("; ");
    if (editor_.accessibleDescription() != description) editor_.setAccessibleDescription(description);
}

// A long line can be scrolled so far that its note does not cover its end.
void LineNotes::WidenScrolling(int textMaximum) {
    if (isWidening_) return;
    const QScopedValueRollback widening(isWidening_, true);
    textMaximum_ = textMaximum;
    const int needed = notes_.empty() ? 0 : extent_ - editor_.viewport()->width();
    editor_.horizontalScrollBar()->setMaximum(std::max(textMaximum, needed));
}

QRect LineNotes::EndOfLine(const Shown& note) const {
    QTextCursor end(editor_.document()->findBlockByNumber(note.Line));
    end.movePosition(QTextCursor::EndOfBlock);
    return editor_.cursorRect(end);
}

// After the line. Where that leaves too little room it covers the end of the line, but for a grey one, which is not
// worth that.
QRect LineNotes::Place(const Shown& note) const {
    const QRect end = EndOfLine(note);
    const int right = editor_.viewport()->width();
    const bool isGrey = GroundOf(note.What) == NeutralNoteGround;
    const int tightest =
        isGrey ? std::min(end.right() + leastGap, right - sliver) : right - std::min(leastWidth, note.Width);
    const int left = std::min(end.right() + gap, std::max(tightest, right - note.Width));
    return {left, end.top(), std::min(note.Width, right - left), end.height()};
}

// The notes of the lines between these heights in the viewport. Below the last line Qt finds the first one while
// something is being composed in the last.
auto LineNotes::Between(int top, int bottom) const {
    const QTextBlock last = editor_.document()->lastBlock();
    const int end = editor_.cursorRect(QTextCursor(last)).bottom();
    const auto lineAt = [&](int y) {
        return y > end ? last.blockNumber() : editor_.cursorForPosition({0, y}).blockNumber();
    };
    return std::ranges::subrange(std::ranges::lower_bound(notes_, lineAt(top), {}, &Shown::Line),
                                 std::ranges::upper_bound(notes_, lineAt(bottom), {}, &Shown::Line));
}

void LineNotes::Paint(const QRect& part) const {
    if (notes_.empty()) return;
    QPainter painter(editor_.viewport());
    painter.setFont(font_);
    for (const Shown& note : Between(part.top(), part.bottom())) {
        const QRect place = Place(note);
        painter.fillRect(place, GroundOf(note.What));
        const QRect inside = place.adjusted(padding, 0, -padding, 0);
        const bool isCutOff = place.width() < note.Width;
        constexpr int flags = Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine;
        if (isCutOff)
            painter.drawText(inside, flags,
                             painter.fontMetrics().elidedText(note.Text, Qt::ElideRight, inside.width()));
        else
            painter.drawText(inside, flags | Qt::TextDontClip, note.Text);
    }
}

QString LineNotes::At(const QPoint& place) const {
    if (notes_.empty()) return {};
    for (const Shown& note : Between(place.y(), place.y()))
        if (Place(note).contains(place)) return note.Text;
    return {};
}

}  // namespace platform
