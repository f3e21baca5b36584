#pragma once

#include <QTextCursor>
#include <QTextDocument>
#include <vector>

namespace platform {

// Marks on lines of a text, which go with their lines wherever a change moves them, and with a line that is removed.
// Lines count from 1.
class LineMarks {
public:
    // The text has a line at least, and outlives this.
    explicit LineMarks(QTextDocument& text) : text_(text) {}

    // Marks a line, or takes its mark away. Nothing happens if the text has no such line.
    void Toggle(int line);
    void Clear() { marks_.clear(); }
    bool IsEmpty() const { return marks_.empty(); }
    bool Has(int line) const;
    std::vector<int> Lines() const;  // in ascending order

    // From KeepNumbers on, the numbers that the marked lines had in the text as it was then, in ascending order. What
    // is marked after the text has changed has none.
    void KeepNumbers();
    std::vector<int> KeptNumbers() const;

    // A change is about to move this stretch of the text to another place: the marks of the lines whose text is in it
    // go there. A cursor without a selection moves nothing.
    void Lift(const QTextCursor& stretch);

    // Each change of the text ends with one of these: with the first where it stands, which returns whether a mark has
    // gone, and with the second where it has been taken back and the text is what it was. The place is where a stretch
    // ends that has been moved.
    bool Follow(int endOfMoved);
    void Restore();

private:
    struct Mark {
        int Line;
        int KeptNumber;  // 0 for none
        // Changes move these. The first is anchored before the line end in front of the line, and stands after it; the
        // other one stands at the beginning of the next line, if there is one.
        QTextCursor Start;
        QTextCursor Next;
        // Where a line begins that has been joined to the one before it, until they are separated again.
        QTextCursor Joint;
        // Where a line begins that is moved, in characters before the end of what is moved; 0 for others.
        int Lifted = 0;
    };

    void PutDown(Mark& mark, int endOfMoved);
    void Anchor(Mark& mark);
    static bool IsJoined(const Mark& mark);
    static bool IsGone(const Mark& mark);

    QTextDocument& text_;
    std::vector<Mark> marks_;      // in ascending order
    bool numbersAreKept_ = false;  // and the text is the same
};

}  // namespace platform
