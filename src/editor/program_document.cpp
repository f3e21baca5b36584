#include "editor/program_document.h"

#include <QFileInfo>
#include <optional>

#include "editor/plain_source.h"
#include "editor/program_highlighter.h"
#include "files/file_reader.h"
#include "files/file_writer.h"
#include "platform/clipboard.h"
#include "platform/dialogs.h"

namespace editor {

namespace {

const QString untitled = QStringLiteral("Untitled");

// Nothing, without a word, for a file that cannot be read for another reason than its content.
std::optional<ProgramFile> ReadProgramFile(const QString& path) {
    files::Content file = files::ReadFile(QFileInfo(path).filesystemFilePath(), LargestProgramFile);
    if (file.IsTooLarge) return ProgramFile{{}, {}, std::move(file.Problem)};
    if (!file.Problem.empty()) return std::nullopt;
    ProgramFile program = DecodeProgramFile(file.Bytes);
    // It is going to be written with CR LF.
    program.Text = QString::fromStdU16String(program.Text)
                       .replace("\r\n", "\n")
                       .replace('\r', '\n')
                       .replace('\n', "\r\n")
                       .toStdU16String();
    if (program.Problem.empty()) program.Problem = FindExcess(program.Text, program.ReadAs).value_or("");
    return program;
}

}  // namespace

ProgramDocument::ProgramDocument(QWidget* parent)
    : QObject(parent), txtCode_(new platform::ProgramText(parent)), ProgramFileName(untitled) {
    // The first pass over the empty text comes before anyone listens: to Qt it is a change.
    (new ProgramHighlighter(txtCode_->document()))->rehighlight();
    constexpr std::size_t mostBytesOfACharacter = 3;
    txtCode_->SetRules(
        {.Plain = PlainSource,
         .LongestLine = static_cast<int>(LongestLine),
         .SafeLength = static_cast<int>(LargestProgramFile / mostBytesOfACharacter),
         .IsTooLong = [this](std::u16string_view text) { return FindExcess(text, encoding_).has_value(); }});
    connect(
        txtCode_, &platform::ProgramText::Refused, this, [this] { ShowRefusal(); }, Qt::QueuedConnection);
    connect(txtCode_, &platform::ProgramText::TextChanged, this, &ProgramDocument::txtCode_Change);
    // The program that the file was dragged from waits until the drop is done, and must not wait for an answer.
    connect(txtCode_, &platform::ProgramText::FileDropped, this, &ProgramDocument::OpenDropped, Qt::QueuedConnection);
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

void ProgramDocument::OpenDropped(const QString& path) {
    const auto answer = OfferToSave();
    const bool unsaved = answer == QMessageBox::Yes && ProgramChanged;
    if (answer != QMessageBox::Cancel && !unsaved) Open(path);
}

void ProgramDocument::Open(const QString& path) {
    const auto file = ReadProgramFile(path);
    if (!file) return;
    if (!file->Problem.empty()) {
        platform::ShowMessage(*txtCode_, path + " cannot be opened. " + QString::fromStdString(file->Problem),
                              QMessageBox::Information);
        return;
    }
    txtCode_->SetText(file->Text);
    encoding_ = file->ReadAs;
    ProgramFileName = path;
    BeginUnchanged();
}

void ProgramDocument::BeginUnchanged() {
    ProgramChanged = false;
    WriteFileName();
    emit Replaced();
}

void ProgramDocument::ShowRefusal() {
    platform::ShowMessage(
        *txtCode_,
        "The text would become too long for a file that can be opened again: a line has at most 32767 "
        "characters, and a file 1 MB. Nothing has been changed.",
        QMessageBox::Information);
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
