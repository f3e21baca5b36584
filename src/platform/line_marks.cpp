#include "platform/line_marks.h"

#include <QTextBlock>
#include <algorithm>
#include <utility>

namespace platform {

void LineMarks::Toggle(int line) {
    const auto place = std::ranges::lower_bound(marks_, line, {}, &Mark::Line);
    if (place != marks_.end() && place->Line == line) {
        marks_.erase(place);
    } else if (line >= 1 && line <= text_.blockCount()) {
        Mark mark{line, numbersAreKept_ ? line : 0, QTextCursor(&text_), {}, {}};
        Anchor(mark);
        marks_.insert(place, std::move(mark));
    }
}

bool LineMarks::Has(int line) const {
    return std::ranges::binary_search(marks_, line, {}, &Mark::Line);
}

std::vector<int> LineMarks::Lines() const {
    std::vector<int> lines;
    for (const Mark& mark : marks_) lines.push_back(mark.Line);
    return lines;
}

void LineMarks::KeepNumbers() {
    numbersAreKept_ = true;
    for (Mark& mark : marks_) mark.KeptNumber = mark.Line;
}

std::vector<int> LineMarks::KeptNumbers() const {
    std::vector<int> numbers;
    for (const Mark& mark : marks_)
        if (mark.KeptNumber != 0) numbers.push_back(mark.KeptNumber);
    std::ranges::sort(numbers);
    return numbers;
}

void LineMarks::Lift(const QTextCursor& stretch) {
    for (Mark& mark : marks_) {
        const QTextBlock line = text_.findBlockByNumber(mark.Line - 1);
        const bool isMoved = line.position() >= stretch.selectionStart() &&
                             line.position() + line.length() - 1 <= stretch.selectionEnd();
        mark.Lifted = isMoved ? stretch.selectionEnd() - line.position() : 0;
    }
}

bool LineMarks::Follow(int endOfMoved) {
    numbersAreKept_ = false;
    const std::size_t before = marks_.size();
    for (Mark& mark : marks_)
        if (mark.Lifted > 0) PutDown(mark, endOfMoved);
    std::erase_if(marks_, IsGone);
    for (Mark& mark : marks_) {
        if (IsJoined(mark) && mark.Joint.isNull()) mark.Joint = mark.Start;
        mark.Line = (mark.Joint.isNull() ? mark.Start : mark.Joint).blockNumber() + 1;
        if (mark.Joint.atBlockStart()) mark.Joint = {};
        Anchor(mark);
    }
    std::ranges::sort(marks_, {}, &Mark::Line);
    // Two lines that have become one.
    const auto rest = std::ranges::unique(marks_, {}, &Mark::Line);
    marks_.erase(rest.begin(), rest.end());
    return marks_.size() != before;
}

void LineMarks::Restore() {
    for (Mark& mark : marks_) {
        mark.Joint = {};
        mark.Lifted = 0;
        Anchor(mark);
    }
}

void LineMarks::PutDown(Mark& mark, int endOfMoved) {
    mark.Line = text_.findBlock(endOfMoved - std::exchange(mark.Lifted, 0)).blockNumber() + 1;
    mark.Joint = {};
    Anchor(mark);
}

void LineMarks::Anchor(Mark& mark) {
    const QTextBlock line = text_.findBlockByNumber(mark.Line - 1);
    const QTextBlock next = line.next();
    mark.Start.setPosition(std::max(0, line.position() - 1));
    mark.Start.setPosition(line.position(), QTextCursor::KeepAnchor);
    mark.Next = next.isValid() ? QTextCursor(next) : QTextCursor();
}

// The line end in front of it has been removed.
bool LineMarks::IsJoined(const Mark& mark) {
    return mark.Line > 1 && mark.Start.anchor() == mark.Start.position() && !mark.Start.atBlockStart();
}

// A line is gone when the line end in front of it has been removed and all of its text as well, or its own line end
// with all of its text. What has been joined to the line before, or has got another text, is still there.
bool LineMarks::IsGone(const Mark& mark) {
    const bool hasNothingBeforeNext = !mark.Next.isNull() && mark.Next.position() == mark.Start.position();
    return hasNothingBeforeNext || (IsJoined(mark) && mark.Start.atBlockEnd());
}

}  // namespace platform
