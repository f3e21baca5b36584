#include "editor/program_document.h"

#include <QDir>
#include <QFileInfo>
#include <utility>

#include "editor/plain_source.h"
#include "editor/program_highlighter.h"
#include "files/file_reader.h"
#include "files/file_writer.h"
#include "platform/clipboard.h"
#include "platform/dialogs.h"

namespace editor {

namespace {

const QString untitled = QStringLiteral("Untitled");

files::Content ReadBytes(const QString& path) {
    return files::ReadFile(QFileInfo(path).filesystemFilePath(), LargestProgramFile);
}

// Nothing, without a word, for a file that cannot be read for another reason than its content.
std::optional<ProgramFile> ReadProgramFile(const QString& path) {
    files::Content file = ReadBytes(path);
    if (file.IsTooLarge) return ProgramFile{{}, {}, std::move(file.Problem)};
    if (!file.Problem.empty()) return std::nullopt;
    ProgramFile program = DecodeProgramFile(file.Bytes);
    if (program.Problem.empty()) program.Problem = FindProblem(program.Text);
    return program;
}

}  // namespace

ProgramDocument::ProgramDocument(QWidget* parent)
    : QObject(parent), txtCode_(new platform::ProgramText(parent)), ProgramFileName(untitled) {
    // The first pass over the empty text comes before anyone listens: to Qt it is a change.
    (new ProgramHighlighter(txtCode_->document()))->rehighlight();
    txtCode_->SetRules({PlainSource, FindProblem, RoomIn});
    // The box must not open inside a change, nor twice for keys that came before it was there.
    connect(txtCode_, &platform::ProgramText::Refused, this, &ProgramDocument::ShowRefusal, Qt::QueuedConnection);
    connect(txtCode_, &platform::ProgramText::TextChanged, this, &ProgramDocument::txtCode_Change);
    // The program that the file was dragged from waits until the drop is done, and must not wait for an answer.
    connect(txtCode_, &platform::ProgramText::FileDropped, this, &ProgramDocument::OpenDropped, Qt::QueuedConnection);
}

QString ProgramDocument::Folder() const {
    return ProgramFileName == untitled ? QString() : QFileInfo(ProgramFileName).absolutePath();
}

QMessageBox::StandardButton ProgramDocument::OfferToSave() {
    if (!ProgramChanged) return QMessageBox::No;
    const auto answer = platform::AskYesNoCancel(*txtCode_, "Program has changed. Save changes?", "Save?");
    if (answer == QMessageBox::Yes) mnuSave_Click();
    return answer;
}

// The text is emptied whether or not the saving succeeded. Emptying it sets the mark, which is then cleared.
void ProgramDocument::mnuNew_Click() {
    if (OfferToSave() == QMessageBox::Cancel) return;
    ProgramFileName = untitled;
    encoding_ = Encoding::Utf8;
    mnuSelectAll_Click();
    txtCode_->ReplaceSelection({});
    BeginUnchanged();
}

void ProgramDocument::mnuOpen_Click() {
    if (const auto path = fileDialog_.ShowOpen(*txtCode_)) Open(*path);
}

void ProgramDocument::OpenNamed(const QString& name) {
    const QString path = QDir::toNativeSeparators(QFileInfo(name).absoluteFilePath());
    const files::Content file = ReadBytes(path);
    if (file.Problem.empty() || file.IsTooLarge)
        Open(path);
    else
        ShowWhyNotOpened(path, file.Problem);
}

void ProgramDocument::OpenDropped(const QString& path) {
    if (!Read(path)) return;
    const auto answer = OfferToSave();
    const bool unsaved = answer == QMessageBox::Yes && ProgramChanged;
    if (answer != QMessageBox::Cancel && !unsaved) Open(path);
}

void ProgramDocument::Open(const QString& path) {
    const auto file = Read(path);
    if (!file) return;
    txtCode_->SetText(file->Text);
    encoding_ = file->ReadAs;
    ProgramFileName = path;
    platform::FileDialog::AddPlace(Folder());
    BeginUnchanged();
}

void ProgramDocument::BeginUnchanged() {
    ProgramChanged = false;
    txtCode_->Notes().Clear();
    WriteFileName();
    emit Replaced();
}

// Says why it refuses a file that can be read.
std::optional<ProgramFile> ProgramDocument::Read(const QString& path) {
    auto file = ReadProgramFile(path);
    if (!file || file->Problem.empty()) return file;
    ShowWhyNotOpened(path, file->Problem);
    return std::nullopt;
}

void ProgramDocument::ShowWhyNotOpened(const QString& path, const std::string& reason) {
    const QString text = path + " cannot be opened. " + QString::fromStdString(reason);
    platform::ShowMessage(*txtCode_, text.endsWith('.') ? text : text + '.', QMessageBox::Information);
}

void ProgramDocument::ShowRefusal(const QString& reason) {
    if (std::exchange(showsRefusal_, true)) return;
    platform::ShowMessage(*txtCode_,
                          "The program stays as it was. A file with the change could not be opened again. " + reason,
                          QMessageBox::Information);
    showsRefusal_ = false;
}

void ProgramDocument::mnuSave_Click() {
    if (ProgramFileName == untitled) {
        mnuSaveAs_Click();
        return;
    }
    WriteProgramFile();
}

// The document takes the new name before it is written, and keeps it if the writing fails.
void ProgramDocument::mnuSaveAs_Click() {
    const auto path = fileDialog_.ShowSave(*txtCode_);
    if (!path) return;
    ProgramFileName = *path;
    WriteProgramFile();
}

void ProgramDocument::mnuCut_Click() {
    mnuCopy_Click();
    txtCode_->ReplaceSelection({});
}

void ProgramDocument::mnuCopy_Click() {
    platform::PutRichText(txtCode_->SelectedText());
}

void ProgramDocument::mnuPaste_Click() {
    txtCode_->ReplaceSelection(platform::ReadRichText());
}

void ProgramDocument::mnuSelectAll_Click() {
    txtCode_->SetSelectionStart(0);
    txtCode_->SetSelectionLength(txtCode_->Length());
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

void ProgramDocument::WriteProgramFile() {
    const EncodedProgram file = EncodeProgramFile(txtCode_->Text(), encoding_);
    if (files::WriteFile(QFileInfo(ProgramFileName).filesystemFilePath(), file.Bytes)) return;
    encoding_ = file.WrittenAs;
    ProgramChanged = false;
    WriteFileName();
}

}  // namespace editor
