#pragma once

#include <QObject>

#include "editor/program_file.h"
#include "machine/machine_state.h"
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
    ProgramDocument(m8085::MachineState& machineState, QWidget* parent);

    platform::ProgramText& txtCode() { return text; }
    platform::FileDialog& cDialog() { return fileDialog; }

    void mnuNew_Click();
    void mnuOpen_Click();
    void mnuSave_Click();
    void mnuSaveAs_Click();
    void mnuCut_Click();
    void mnuCopy_Click();
    void mnuPaste_Click();
    void mnuSelectAll_Click();

    // Selects a source line, counted from 1. Line 0 is that of an address with no instruction: it halts the machine and
    // clears the selection. A line that the text does not have clears the selection.
    void GotoLine(int line);

    void ClearSelection();

signals:
    void TitleChanged(const QString& title);

    // After each change of the text, however it was made.
    void TextChanged();

private:
    void txtCode_Change();
    void WriteFileName();
    bool WriteProgramFile();

    m8085::MachineState& machine;
    platform::ProgramText& text;
    platform::FileDialog fileDialog;
    QString ProgramFileName;
    bool ProgramChanged = false;
    Encoding encoding = Encoding::Utf8;
};

}  // namespace editor
