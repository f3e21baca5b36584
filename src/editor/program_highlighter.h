#pragma once

#include <QSyntaxHighlighter>

namespace editor {

// Shows the colours of the program text. Only the lines that a change touches are coloured anew, and colouring is no
// change of the text.
class ProgramHighlighter : public QSyntaxHighlighter {
    Q_OBJECT

public:
    explicit ProgramHighlighter(QTextDocument* document);

protected:
    void highlightBlock(const QString& line) override;

private:
    QTextCharFormat mnemonic;
    QTextCharFormat comment;
    QTextCharFormat mnemonicInComment;
};

}  // namespace editor
