#pragma once

#include <QElapsedTimer>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace platform {

struct TextRules {
    // What a text that has come in becomes. It must leave alone what it returns itself, and look at each line alone.
    std::function<std::u16string(std::u16string_view)> Plain;

    // In characters. A text whose lines are not longer, and which is not longer as a whole than the safe length, is
    // taken; a longer one if this says that it is not too long.
    int LongestLine = std::numeric_limits<int>::max();
    int SafeLength = std::numeric_limits<int>::max();
    std::function<bool(std::u16string_view)> IsTooLong;
};

// The editor of the program text. To the program its lines end in CR LF: positions and lengths count from 0 and a line
// end counts as two characters. A position inside a line end, or beyond the end of the text, is moved to the nearest
// one before it.
class ProgramText : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit ProgramText(QWidget* parent);

    // What becomes of text that the user brings in, by whatever way.
    void SetRules(TextRules rules) { rules_ = std::move(rules); }

    std::u16string Text() const;
    int Length() const;  // of Text(), without building it

    // Replaces the whole text, and with it what can be undone. CR LF, LF and CR each end a line. Always a change.
    void SetText(std::u16string_view text);

    int SelectionStart() const;
    void SetSelectionStart(int position);     // the selection becomes empty
    void SetSelectionLength(int characters);  // from the start of the selection; 0 or more
    std::u16string SelectedText() const;

    // Puts the text in the place of the selection, or at the caret where nothing is selected. The caret is left after
    // it. One step to undo, whatever was done before and after.
    void ReplaceSelection(std::u16string_view text);

    // Inserts the text at each of these positions, which are in ascending order and take no account of each other. One
    // change, and one step to undo like the other. The caret is left after the last one.
    void InsertAt(const std::vector<std::size_t>& positions, std::u16string_view text);

    // Makes the selection empty. The caret stays where the selection began, and nothing scrolls.
    void ClearSelection();

    // Selects a line for the user to see, counted from 1, without its line end, and scrolls it into view with some of
    // the lines below it. Clears the selection if the text has no such line. Such a selection cannot be dragged: the
    // mouse selects there.
    void SelectLine(int line);

signals:
    // Once for each change of the text. Colours do not count as one.
    void TextChanged();

    // A change would have made the text too long, and nothing has been changed.
    void Refused();

    // A file has been dropped on the editor. Several at once, folders, and files that are not on this computer, are
    // refused.
    void FileDropped(const QString& path);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    QMimeData* createMimeDataFromSelection() const override;
    void insertFromMimeData(const QMimeData* source) override;

private:
    void NoteChange(int position, int removed, int added);
    void FinishChange();
    void ForgetChange();
    void MakePlain();
    void PutInPlaceOf(const QTextBlock& block, std::u16string_view line, std::u16string_view plain);
    std::u16string PlainAt(int position, std::u16string_view text) const;
    bool MayBecomeTooLong(std::size_t inserted) const;
    bool HasBecomeTooLong(int lengthBefore) const;
    void Change(std::size_t inserted, const std::function<void()>& change);
    void TypeKey(QKeyEvent* event);
    bool IsInSelection(const QPoint& place) const;
    bool MayDrag(const QMouseEvent& press) const;
    void DragSelection();
    void BeginStep();
    void EndStep(std::size_t inserted);
    void ForgetSteps();
    int ToDocument(int position) const;
    int FromDocument(int position) const;

    TextRules rules_;
    bool isChanging_ = false;
    int firstChanged_ = std::numeric_limits<int>::max();  // positions in the document, of a change to be finished
    int endOfChanged_ = 0;
    bool selectionIsForTheEye_ = false;  // made by SelectLine
    std::optional<QPoint> pressInSelection_;
    QPoint doubleClick_;  // the latest
    QElapsedTimer sinceDoubleClick_;
    std::size_t inserted_ = 0;  // characters, in all steps since nothing could be undone
};

}  // namespace platform
