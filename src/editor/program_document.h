#pragma once

#include <QObject>

#include "editor/program_file.h"
#include "platform/dialogs.h"
#include "platform/file_dialog.h"
#include "platform/program_text.h"

namespace editor {

class ProgramHighlighter;

// The one program text that is open: its file, its changed mark, the commands of the File and Edit menus that act on
// it, and the selection of a line for the commands that show where the program stands.
//
// A command that fails, or whose dialog is cancelled, ends without a message.
class ProgramDocument : public QObject {
    Q_OBJECT

public:
    explicit ProgramDocument(QWidget* parent);

    platform::ProgramText& txtCode() { return *txtCode_; }
    platform::FileDialog& cDialog() { return fileDialog_; }

    void mnuNew_Click();
    void mnuOpen_Click();
    void mnuSave_Click();
    void mnuSaveAs_Click();
    void mnuCut_Click();
    void mnuCopy_Click();
    void mnuPaste_Click();
    void mnuSelectAll_Click();

    // If the text has changed, asks whether to save it, and saves it or not. Returns the answer; No if nothing was
    // asked.
    QMessageBox::StandardButton OfferToSave();

    // Selects a source line, counted from 1; for 0 and for a line that the text does not have it clears the selection.
    void SelectLine(int line);

    void ClearSelection();

signals:
    void TitleChanged(const QString& title);

    // After each change of the text, however it was made.
    void TextChanged();

private:
    void OpenDropped(const QString& path);
    void Open(const QString& path);
    void txtCode_Change();
    void WriteFileName();
    bool WriteProgramFile();

    platform::ProgramText* txtCode_;
    platform::FileDialog fileDialog_;
    QString ProgramFileName;
    bool ProgramChanged = false;
    Encoding encoding_ = Encoding::Utf8;
};

}  // namespace editor
