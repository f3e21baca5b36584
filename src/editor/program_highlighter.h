#pragma once

#include <QSyntaxHighlighter>

namespace editor {

// Shows the colours of the program text. Only the lines that a change touches are coloured again, and colouring
// does not change the text. In a line of thousands of mnemonics the colours stop before its end.
class ProgramHighlighter : public QSyntaxHighlighter {
    Q_OBJECT

public:
    explicit ProgramHighlighter(QTextDocument* document);

protected:
    void highlightBlock(const QString& line) override;

private:
    QTextCharFormat mnemonic_;
    QTextCharFormat comment_;
    QTextCharFormat mnemonicInComment_;
};

}  // namespace editor
