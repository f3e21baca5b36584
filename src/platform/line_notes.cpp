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
constexpr int sliver = 8;  // what is left at least of a neutral note, in its colour alone
constexpr int padding = 4;
constexpr int leastWidth = 200;  // of a note that is cut off

constexpr int gone = -1;  // in the place of a line

QColor GroundOf(LineNote::Kind kind) {
    switch (kind) {
        case LineNote::Kind::Good: return GoodNoteGround;
        case LineNote::Kind::Neutral: return NeutralNoteGround;
        case LineNote::Kind::Bad: break;
    }
    return BadNoteGround;
}

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
    lines_ = editor_.blockCount();
    extent_ = 0;
    const QFontMetrics metrics(font_);
    for (const LineNote& note : notes) {
        const QTextBlock line = editor_.document()->findBlockByNumber(note.Line - 1);
        if (!line.isValid()) continue;
        const Shown& shown = notes_.emplace_back(line.blockNumber(), line.text(), note.Text, note.What,
                                                 metrics.horizontalAdvance(note.Text) + 2 * padding);
        const int end = EndOfLine(shown).right() + editor_.horizontalScrollBar()->value();
        extent_ = std::max(extent_, end + gap + std::min(leastWidth, shown.Width));
    }
    Describe();
    WidenScrolling(textMaximum_);
    editor_.viewport()->update();
}

// A line that the change may have touched has to be found again: as far from the beginning of the text as before, or
// as far from its end. Of two lines that have become one, one note stays.
void LineNotes::NoteChange(int position, int added) {
    if (notes_.empty()) return;
    const QTextDocument& text = *editor_.document();
    const int more = text.blockCount() - std::exchange(lines_, text.blockCount());
    const int first = text.findBlock(position).blockNumber();
    const int last = text.findBlock(std::min(position + added, text.characterCount() - 1)).blockNumber();
    for (Shown& note : notes_) {
        const bool isTouched = note.Line >= first && note.Line <= last - more;
        if (note.Line < first || (isTouched && IsAt(note.Line, note))) continue;
        note.Line = !isTouched || IsAt(note.Line + more, note) ? note.Line + more : gone;
    }
    if (std::erase_if(notes_, [](const Shown& note) { return note.Line == gone; }) > 0) editor_.viewport()->update();
    std::ranges::sort(notes_, {}, &Shown::Line);
    const auto same = std::ranges::unique(notes_, {}, &Shown::Line);
    notes_.erase(same.begin(), same.end());
    Describe();
}

bool LineNotes::IsAt(int line, const Shown& note) const {
    const QTextBlock block = editor_.document()->findBlockByNumber(line);
    return block.isValid() && block.text() == note.TextOfLine;
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

// After the line. Where that leaves too little room it covers the end of the line, but for a neutral one, which is not
// worth that.
QRect LineNotes::Place(const Shown& note) const {
    const QRect end = EndOfLine(note);
    const int right = editor_.viewport()->width();
    const int tightest = note.What == LineNote::Kind::Neutral ? std::min(end.right() + leastGap, right - sliver)
                                                              : right - std::min(leastWidth, note.Width);
    const int left = std::min(end.right() + gap, std::max(tightest, right - note.Width));
    return {left, end.top(), std::min(note.Width, right - left), end.height()};
}

// The notes of the lines between these heights in the viewport.
auto LineNotes::Between(int top, int bottom) const {
    const auto lineAt = [this](int y) { return editor_.cursorForPosition({0, y}).blockNumber(); };
    return std::ranges::subrange(std::ranges::lower_bound(notes_, lineAt(top), {}, &Shown::Line),
                                 std::ranges::upper_bound(notes_, lineAt(bottom), {}, &Shown::Line));
}

void LineNotes::Paint(const QRect& part) const {
    if (notes_.empty()) return;
    QPainter painter(editor_.viewport());
    painter.setFont(font_);
    painter.setPen(Qt::black);
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
