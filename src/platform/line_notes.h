#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <span>
#include <vector>

class QPlainTextEdit;
class QTextBlock;

namespace platform {

// Something to say about a line of a text that is not part of the text.
struct LineNote {
    enum class Kind { Good, Neutral, Bad, Hint };

    int Line = 0;  // counted from 1
    QString Text;
    Kind What = Kind::Bad;
};

// Notes that are painted after the ends of an editor's lines, and told to those who hear and do not see them. A note
// goes with its line, and is gone when the line changes.
class LineNotes : public QObject {
public:
    explicit LineNotes(QPlainTextEdit& editor);

    // Shows these, one for a line and in the order of their lines, and no others. A line that the text does not have
    // gets none.
    void Show(const std::vector<LineNote>& notes);
    void Clear() { Show({}); }

    // The same, but hints stay where there is no other note for their lines.
    void ShowBesideHints(std::vector<LineNote> notes);

    // Does what replaces the text and leaves it as it was: the notes stay at their lines.
    void StayThrough(const std::function<void()>& change);

    // Each change of the text ends with one of these: with the first where it stands, and with the second where it has
    // been taken back and the text is what it was.
    void Follow();
    void Restore();

    // To be called when the editor has painted its text in a part of its viewport.
    void Paint(const QRect& part) const;

    // The whole text of the note at a place of the viewport; empty where there is none.
    QString At(const QPoint& place) const;

private:
    struct Shown {
        int Line;        // counted from 0
        int LineBefore;  // the change that has not ended yet
        QString TextOfLine;
        QString Text;
        LineNote::Kind What;
        int Width;       // in pixels, where it is not cut off
        int Anchor = 0;  // of the line's block, unlike every other one
    };

    void NoteChange(int position, int added);
    void FindAgain(std::span<Shown> notes, const QTextBlock& first, const QTextBlock& last, int more);
    void Anchor(Shown& note);
    void Describe();
    void WidenScrolling(int textMaximum);
    QRect EndOfLine(const Shown& note) const;
    QRect Place(const Shown& note) const;
    auto Between(int top, int bottom) const;

    QPlainTextEdit& editor_;
    const QFont font_;
    std::vector<Shown> notes_;  // in ascending order
    std::vector<Shown> lost_;   // to the change that has not ended yet
    int anchors_ = 0;           // so many there have been
    int lines_ = 0;             // of the text
    int extent_ = 0;            // of lines and notes from the text's left edge, in pixels
    int textMaximum_ = 0;       // of the horizontal scroll bar, for the text alone
    bool isWidening_ = false;
};

}  // namespace platform
