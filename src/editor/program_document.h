#pragma once

#include <QObject>
#include <optional>

#include "editor/program_file.h"
#include "platform/dialogs.h"
#include "platform/file_dialog.h"
#include "platform/program_text.h"

namespace editor {

// The one program text that is open: its file, its changed mark, and the commands of the File and Edit menus that act
// on it.
//
// A command that fails, or whose dialog is cancelled, ends without a message; but Open says why it refuses a file that
// can be read.
class ProgramDocument : public QObject {
    Q_OBJECT

public:
    explicit ProgramDocument(QWidget* parent);

    platform::ProgramText& txtCode() { return *txtCode_; }
    platform::FileDialog& cDialog() { return fileDialog_; }

    // The folder of the program's file; empty while it has none.
    QString Folder() const;

    void mnuNew_Click();
    void mnuOpen_Click();
    void mnuSave_Click();
    void mnuSaveAs_Click();
    void mnuCut_Click();
    void mnuCopy_Click();
    void mnuPaste_Click();
    void mnuSelectAll_Click();

    // As Open after its dialog, without a question. Every file that cannot be opened gets a message that says why.
    void OpenNamed(const QString& name);

    // If the text has changed, asks whether to save it, and saves it or not. Returns the answer; No if nothing was
    // asked.
    QMessageBox::StandardButton OfferToSave();

signals:
    void TitleChanged(const QString& title);

    // After each change of the text, however it was made.
    void TextChanged();

    // New or Open has put another text in the place of the one that was there.
    void Replaced();

private:
    void OpenDropped(const QString& path);
    void Open(const QString& path);
    std::optional<ProgramFile> Read(const QString& path);
    void ShowWhyNotOpened(const QString& path, const std::string& reason);
    void BeginUnchanged();
    void ShowRefusal(const QString& reason);
    void txtCode_Change();
    void WriteFileName();
    void WriteProgramFile();

    platform::ProgramText* txtCode_;
    platform::FileDialog fileDialog_;
    QString ProgramFileName;
    bool ProgramChanged = false;
    Encoding encoding_ = Encoding::Utf8;
    bool showsRefusal_ = false;
};

}  // namespace editor
