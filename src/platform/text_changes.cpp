#include "platform/text_changes.h"

#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QTextBlock>
#include <algorithm>
#include <utility>

#include "platform/document_text.h"

namespace platform {

void TextChanges::SetText(std::u16string_view text) {
    const QScopedValueRollback asItIs(rules_, TextRules());
    editor_.setPlainText(ToDocumentText(text));
    room_ = 0;
}

// A stretch of the document, as the rules take it.
std::u16string TextChanges::Stretch(int from, int to) const {
    QTextCursor cursor(editor_.document());
    cursor.setPosition(from);
    cursor.setPosition(to, QTextCursor::KeepAnchor);
    return FromDocumentText(cursor.selectedText(), u"\n");
}

// The line end before it belongs to it, so that the rules can tell the first line of the text from the others.
int TextChanges::StartOfLine(int position) const {
    return std::max(0, editor_.document()->findBlock(position).position() - 1);
}

int TextChanges::EndOfLine(int position) const {
    const QTextDocument& document = *editor_.document();
    const QTextBlock block = document.findBlock(std::min(position, document.characterCount() - 1));
    return block.position() + block.length() - 1;
}

std::string TextChanges::FindProblem(std::u16string_view text) const {
    if (!rules_.Plain) return {};
    const int from = editor_.textCursor().selectionStart();
    const int to = editor_.textCursor().selectionEnd();
    const auto linesFrom = [&](int start, int end) {
        return rules_.Plain(Stretch(start, from) + std::u16string(text) + Stretch(to, end));
    };
    std::string problem = rules_.FindProblem(linesFrom(StartOfLine(from), EndOfLine(to)));
    if (!problem.empty() || std::ssize(text) <= room_) return problem;
    return rules_.FindProblem(linesFrom(0, editor_.document()->characterCount() - 1));
}

void TextChanges::Note(int position, int added) {
    firstChanged_ = std::min(firstChanged_, position);
    endOfChanged_ = std::max(endOfChanged_, position + added);
    room_ -= added;
}

void TextChanges::Forget() {
    firstChanged_ = nothingChanged;
    endOfChanged_ = 0;
}

// What this does to the text in its turn is a change that ends here as well. Qt may keep the two as two steps: undo and
// redo do not stop between them, where the text is not plain.
std::optional<std::string> TextChanges::Finish() {
    if (firstChanged_ == nothingChanged) return std::nullopt;
    const QTextDocument& document = *editor_.document();
    const int end = std::min(std::exchange(endOfChanged_, 0), document.characterCount() - 1);
    const int first = std::min(std::exchange(firstChanged_, nothingChanged), end);
    const int steps = document.availableUndoSteps();
    const bool isUndone = steps < std::exchange(undoSteps_, steps);
    const std::u16string lines = Stretch(StartOfLine(first), EndOfLine(end));
    const std::u16string plain = rules_.Plain ? rules_.Plain(lines) : lines;
    std::string problem = FindProblemNow(plain);
    if (!problem.empty()) {
        TakeBack();
        return problem;
    }
    if (lines == plain) return std::string();
    if (!document.isRedoAvailable())
        MakePlain(StartOfLine(first), lines, plain);
    else if (isUndone)
        editor_.undo();
    else
        editor_.redo();
    return std::nullopt;
}

// Why the text must not be as it is, with these lines changed.
std::string TextChanges::FindProblemNow(std::u16string_view lines) {
    if (!rules_.Plain) return {};
    std::string problem = rules_.FindProblem(lines);
    if (!problem.empty() || room_ >= 0) return problem;
    const std::u16string text = FromDocumentText(editor_.document()->toRawText(), u"\r\n");
    room_ = rules_.RoomIn(text);
    return room_ < 0 ? rules_.FindProblem(text) : std::string();
}

// Replaces these lines only between what they have in common at their beginning and at their end.
void TextChanges::MakePlain(int start, std::u16string_view lines, std::u16string_view plain) {
    const auto same = std::ranges::mismatch(lines, plain).in1 - lines.begin();
    const auto rest = std::ssize(lines) - same;
    const auto restOfPlain = std::ssize(plain) - same;
    const auto sameAtEnd =
        std::mismatch(lines.rbegin(), lines.rbegin() + std::min(rest, restOfPlain), plain.rbegin()).first -
        lines.rbegin();
    ReplaceInStep(start + static_cast<int>(same), start + static_cast<int>(std::ssize(lines) - sameAtEnd),
                  plain.substr(static_cast<std::size_t>(same), static_cast<std::size_t>(restOfPlain - sameAtEnd)));
}

// The caret and the other end of the selection stay between the characters where they were, or go to the end of the
// stretch.
void TextChanges::ReplaceInStep(int start, int end, std::u16string_view stretch) {
    const auto moved = [=, grown = static_cast<int>(stretch.size()) - (end - start)](int position) {
        return position <= start ? position : std::max(position, end) + grown;
    };
    const int anchor = moved(editor_.textCursor().anchor());
    const int caret = moved(editor_.textCursor().position());
    QTextCursor cursor(editor_.document());
    cursor.joinPreviousEditBlock();
    cursor.setPosition(start);
    cursor.setPosition(end, QTextCursor::KeepAnchor);
    cursor.insertText(ToDocumentText(stretch));
    cursor.endEditBlock();
    cursor.setPosition(anchor);
    cursor.setPosition(caret, QTextCursor::KeepAnchor);
    editor_.setTextCursor(cursor);
}

// To everyone else nothing has changed.
void TextChanges::TakeBack() {
    const QSignalBlocker noChange(&editor_);
    editor_.undo();
    editor_.document()->clearUndoRedoStacks(QTextDocument::RedoStack);
    Forget();
}

}  // namespace platform
