#pragma once

#include <QElapsedTimer>
#include <QPlainTextEdit>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/line_margin.h"
#include "platform/line_marks.h"
#include "platform/line_notes.h"
#include "platform/text_changes.h"

namespace platform {

// The editor of the program text. To the program its lines end in CR LF: positions and lengths count from 0 and a line
// end counts as two characters. A position inside a line end, or beyond the end of the text, is moved to the nearest
// one before it.
class ProgramText : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit ProgramText(QWidget* parent);

    void SetRules(TextRules rules) { changes_.SetRules(std::move(rules)); }

    std::u16string Text() const;
    int Length() const;  // of Text(), without building it

    // Replaces the whole text, and with it what can be undone. CR LF, LF and CR each end a line. Always a change. The
    // text is not refused, and must be plain.
    void SetText(std::u16string_view text);

    int SelectionStart() const;
    void SetSelectionStart(int position);     // the selection becomes empty
    void SetSelectionLength(int characters);  // from the start of the selection; 0 or more
    std::u16string SelectedText() const;

    // Puts the text in the place of the selection, or at the caret where nothing is selected. The caret is left after
    // it. One step to undo, whatever was done before and after. Returns false if it was refused.
    bool ReplaceSelection(std::u16string_view text);

    // Inserts the text at each of these positions, which are in ascending order and take no account of each other. One
    // change, and one step to undo like the other. The caret is left after the last one.
    void InsertAt(const std::vector<std::size_t>& positions, std::u16string_view text);

    // Makes the lines those of the text, which must have as many. Marks stay on their lines. One change, and one step
    // to undo like the others. Returns false if it was refused.
    bool ReplaceLines(std::u16string_view text);

    // Makes the selection empty. The caret stays where the selection began, and nothing scrolls.
    void ClearSelection();

    // Selects a line for the user to see, counted from 1, without its line end, and scrolls it into view with some of
    // the lines below it. Clears the selection if the text has no such line. Such a selection cannot be dragged: the
    // mouse selects there.
    void SelectLine(int line);

    // Marked lines have a ground of their own and a dot in the margin. They are counted from 1.
    const LineMarks& Marks() const { return marks_; }
    void ToggleMark(int line);
    void ClearMarks();

    // See LineMarks::KeepNumbers.
    void KeepLineNumbers();

    // The line that a command is about, counted from 1: that of the place where its menu was opened, or of the caret.
    int CurrentLine() const { return openMenus_ > 0 ? menuLine_ : textCursor().blockNumber() + 1; }

    // The line at a height in the viewport; 0 below the last one.
    int LineAt(int y) const;

    // The places of marked lines, as wide as the viewport, that are in view.
    std::vector<QRectF> VisibleMarkedLines() const;

    // Scrolls a line into view, counted from 1, with some lines around it where it was not. The selection stays.
    void ScrollToLine(int line);

    // What is said beside the lines. The tooltip of a note has all of it.
    LineNotes& Notes() { return notes_; }

    // What a tooltip says about a place elsewhere: in this line, counted from 1, with this text, at this column,
    // counted from 0 and at the end of the line for all that is right of it. Nothing is shown for an empty text.
    using Tips = std::function<QString(int line, const QString& text, int column)>;
    void SetTips(Tips tips) { tips_ = std::move(tips); }

signals:
    // SelectLine has selected one.
    void LineShown();

    // Once for each change of the text. Colours do not count as one.
    void TextChanged();

    // A change that the rules do not let pass has not been made, or has been taken back whole.
    void Refused(const QString& reason);

    // A file has been dropped on the editor. Several at once, folders, and files that are not on this computer, are
    // refused.
    void FileDropped(const QString& path);

    // A line has been marked, or a mark or its kept number is another one.
    void MarksChanged();

    // The context menu is about to show the editor's actions below its own entries.
    void MenuOpening();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    QMimeData* createMimeDataFromSelection() const override;
    void insertFromMimeData(const QMimeData* source) override;

private:
    bool Refuses(std::u16string_view text);
    void FinishChange();
    void ShowMarks();
    bool IsInSelection(const QPoint& place) const;
    void EndComposition();
    bool WaitsForMenu(int line);
    void EndMenu();
    bool MayDrag(const QMouseEvent& press) const;
    void DragSelection();
    void BeginStep();
    void EndStep(std::size_t inserted);
    void ForgetSteps();
    void Select(int anchor, int position);  // in the document

    TextChanges changes_{*this};
    LineMarks marks_;
    LineMargin* margin_;
    LineNotes notes_{*this};
    Tips tips_;
    bool isMoving_ = false;                         // text from one place to another, which is one change
    bool selectionIsForTheEye_ = false;             // made by SelectLine
    bool isRefused_ = false;                        // the latest change
    std::optional<std::pair<int, int>> beforeKey_;  // anchor and caret in the document, while a key does its work
    std::optional<QPoint> pressInSelection_;
    int openMenus_ = 0;                // of what was chosen in the latest the work may not be done yet
    int menuLine_ = 0;                 // where the latest was opened
    std::optional<int> lineToSelect_;  // when they have closed; 0 for none
    QPoint doubleClick_;               // the latest
    QElapsedTimer sinceDoubleClick_;
    std::size_t inserted_ = 0;  // characters, in all steps since nothing could be undone
};

}  // namespace platform
