#pragma once

#include <QPlainTextEdit>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

// What becomes of text that comes in, however it does. Lines end in a line feed, and look only at themselves: but the
// first line of a text is the one with no line feed before it.
struct TextRules {
    // What lines become. It must leave alone what it has returned.
    std::function<std::u16string(std::u16string_view lines)> Plain;

    // Why a text must not have such lines, or must not be this one, in words; empty where it may.
    std::function<std::string(std::u16string_view lines)> FindProblem;

    // How many characters, whichever they are, may still come into this text: so many that it need not be looked at
    // whole until then. Negative if it is too large already.
    std::function<std::ptrdiff_t(std::u16string_view text)> RoomIn;
};

// Applies the rules to each change of an editor's text, however it came about.
class TextChanges {
public:
    explicit TextChanges(QPlainTextEdit& editor) : editor_(editor) {}

    // Without rules every text may stand as it is.
    void SetRules(TextRules rules) { rules_ = std::move(rules); }

    // Sets the whole text, to which the rules do not apply.
    void SetText(std::u16string_view text);

    // Why the selection must not be replaced by a text, in words; empty where it may.
    std::string FindProblem(std::u16string_view text) const;

    // To be called for each change of the document: at this position, with so many characters that are new.
    void Note(int position, int added);

    // To be called when the text has changed. Empty: the change stands. A reason, in words: it must not be, and is
    // taken back. Nothing: the text has not changed, or is changed once more, after which this is called again.
    std::optional<std::string> Finish();

    // What was noted is none, because the text is what it was.
    void Forget();

private:
    std::u16string Stretch(int from, int to) const;
    int StartOfLine(int position) const;
    int EndOfLine(int position) const;
    std::string FindProblemNow(std::u16string_view lines);
    void MakePlain(int start, std::u16string_view lines, std::u16string_view plain);
    void ReplaceInStep(int start, int end, std::u16string_view stretch);
    void TakeBack();

    QPlainTextEdit& editor_;
    TextRules rules_;
    static constexpr int nothingChanged = std::numeric_limits<int>::max();
    int firstChanged_ = nothingChanged;  // positions in the document, since the latest change was finished
    int endOfChanged_ = 0;
    std::ptrdiff_t room_ = 0;  // as rules_.RoomIn counts it, or less
    int undoSteps_ = 0;
};

}  // namespace platform
