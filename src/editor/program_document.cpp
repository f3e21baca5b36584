#include "editor/program_document.h"

#include <QFile>
#include <QFileInfo>
#include <optional>

#include "editor/program_highlighter.h"
#include "files/file_writer.h"
#include "platform/clipboard.h"
#include "platform/dialogs.h"

namespace editor {

namespace {

const QString untitled = QStringLiteral("Untitled");

// A file above this size is no program; reading it would only hold up the window.
constexpr qint64 largestProgramFile = 16 * 1024 * 1024;

std::optional<ProgramFile> ReadProgramFile(const QString& path) {
    QFile file(path);
    if (!QFileInfo(path).isFile() || file.size() > largestProgramFile || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) return std::nullopt;
    return DecodeProgramFile({bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

}  // namespace

ProgramDocument::ProgramDocument(QWidget* parent)
    : QObject(parent), text(*new platform::ProgramText(parent)), ProgramFileName(untitled) {
    // The first pass over the empty text comes before anyone listens: to the toolkit it is a change.
    (new ProgramHighlighter(text.document()))->rehighlight();
    connect(&text, &platform::ProgramText::TextChanged, this, &ProgramDocument::txtCode_Change);
}

bool ProgramDocument::OfferToSave() {
    if (!ProgramChanged) return true;
    const auto answer = platform::AskYesNoCancel(text, "Program has changed. Save changes?", "Save?");
    if (answer == QMessageBox::Yes) mnuSave_Click();
    return answer != QMessageBox::Cancel;
}

// The text goes whatever became of the saving. Emptying it sets the mark, which is then taken away again.
void ProgramDocument::mnuNew_Click() {
    if (!OfferToSave()) return;
    ProgramFileName = untitled;
    encoding = Encoding::Utf8;
    if (text.Length() > 0) text.SetText({});
    text.ForgetHistory();
    ProgramChanged = false;
    WriteFileName();
}

void ProgramDocument::mnuOpen_Click() {
    const auto path = fileDialog.ShowOpen(text);
    if (!path) return;
    const auto file = ReadProgramFile(*path);
    if (!file) return;
    text.SetText(file->Text);
    encoding = file->ReadAs;
    ProgramFileName = *path;
    ProgramChanged = false;
    WriteFileName();
}

void ProgramDocument::mnuSave_Click() {
    if (ProgramFileName == untitled) {
        mnuSaveAs_Click();
        return;
    }
    if (!WriteProgramFile()) return;
    ProgramChanged = false;
    WriteFileName();
}

// The document takes the new name before it is written, and keeps it if the writing fails.
void ProgramDocument::mnuSaveAs_Click() {
    const auto path = fileDialog.ShowSave(text);
    if (!path) return;
    ProgramFileName = *path;
    if (!WriteProgramFile()) return;
    ProgramChanged = false;
    WriteFileName();
}

void ProgramDocument::mnuCut_Click() {
    mnuCopy_Click();
    text.ReplaceSelection({});
}

void ProgramDocument::mnuCopy_Click() {
    platform::PutRichText(text.SelectedText());
}

void ProgramDocument::mnuPaste_Click() {
    text.ReplaceSelection(platform::ReadRichText());
}

void ProgramDocument::mnuSelectAll_Click() {
    text.SetSelectionStart(0);
    text.SetSelectionLength(text.Length());
}

void ProgramDocument::SelectLine(int line) {
    text.SelectLine(line);
}

void ProgramDocument::ClearSelection() {
    text.ClearSelection();
}

// The highlighter has coloured the change by now.
void ProgramDocument::txtCode_Change() {
    ProgramChanged = true;
    WriteFileName();
    emit TextChanged();
}

void ProgramDocument::WriteFileName() {
    emit TitleChanged(QCoreApplication::applicationName() + (" - [" + ProgramFileName) + (ProgramChanged ? "*]" : "]"));
}

bool ProgramDocument::WriteProgramFile() {
    const EncodedProgram file = EncodeProgramFile(text.Text(), encoding);
    if (files::WriteFile(QFileInfo(ProgramFileName).filesystemFilePath(), file.Bytes)) return false;
    encoding = file.WrittenAs;
    return true;
}

}  // namespace editor
