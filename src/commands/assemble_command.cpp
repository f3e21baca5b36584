#include "commands/assemble_command.h"

#include "assembler/explanation.h"
#include "assembler/listing.h"
#include "assembler/source_preparation.h"
#include "assembler/warnings.h"
#include "platform/clipboard.h"
#include "platform/dialogs.h"

namespace commands {

void AssembleCommand::cmdCompile_Click() {
    Assemble();
    memoryGrid_.RefreshRAMDisplay();
}

void AssembleCommand::Assemble() {
    if (runControl_.IsRunning()) return;
    document_.txtCode().Notes().Clear();
    assembled_.reset();
    listedText_.clear();
    const std::u16string text = document_.txtCode().Text();
    const auto splits = assembler::FindLabelSplits(text);
    const auto length = static_cast<std::size_t>(document_.txtCode().Length());
    if (const auto excess = assembler::ExplainExcessLength(length, splits.size())) {
        runControl_.SetAssembled(false);
        return Report(QString::fromStdString(*excess));
    }
    // The labels stay on their own lines in the editor, so that line numbers fit what the user sees.
    document_.txtCode().InsertAt(splits, u"\r\n");

    const assembler::Assembly assembly =
        assembler::AssembleProgram(assembler::ConvertLineEnds(document_.txtCode().Text()), machine_, codeMap_);
    memoryGrid_.RefreshCurrentCell();
    if (assembly.Succeeded) m8085::SetToProgramStart(machine_);
    const auto instructions = assembly.Succeeded ? assembly.Instructions : std::vector<std::int32_t>();
    runControl_.SetAssembled(assembly.Succeeded, instructions);
    memoryGrid_.NameInstructionsAt(instructions);
    if (!assembly.Succeeded) {
        runControl_.GotoLine(assembly.AsmErrorLine);
        Report(QString::fromStdU16String(assembly.AsmErrorText));
        ShowReason(text, assembly);
        return;
    }
    assembled_ = assembly;
    listedText_ = document_.txtCode().Text();
    document_.txtCode().KeepLineNumbers();
    registerPanel_.DisplayRegs();
    ShowWarnings(text);
}

void AssembleCommand::Forget() {
    assembled_.reset();
    memoryGrid_.NameInstructionsAt({});
}

void AssembleCommand::mnuCopyListing_Click() {
    if (!HasListing()) return;
    std::u16string listing;
    for (const std::u16string& line : assembler::ListingOf(listedText_)) listing += line + u"\r\n";
    platform::PutRichText(listing);
}

void AssembleCommand::Report(const QString& message) {
    platform::ShowMessage(document_.txtCode(), message, QMessageBox::Critical, "Error");
    document_.txtCode().setFocus();
}

// The text is the one before its labels were split off, here and below: with a colon in a comment that it was is what
// there is to say.
void AssembleCommand::ShowWarnings(const std::u16string& text) {
    std::vector<platform::LineNote> notes;
    const assembler::PreparedProgram program = assembler::PrepareProgram(text);
    for (const auto& [line, warning] : assembler::FindWarnings(program, assembler::Numbering::OfPrepared)) {
        const QString note = QString::fromStdU16String(warning);
        if (notes.empty() || notes.back().Line != line)
            notes.push_back({line, note, platform::LineNote::Kind::Hint});
        else
            notes.back().Text += "; " + note;
    }
    document_.txtCode().Notes().Show(notes);
}

// The line at fault need not be the one that the message is about.
void AssembleCommand::ShowReason(const std::u16string& text, const assembler::Assembly& failed) {
    const std::u16string reason = assembler::ExplainFailure(assembler::PrepareProgram(text), failed);
    if (reason.empty()) return;
    document_.txtCode().Notes().Show({{failed.FaultLine, QString::fromStdU16String(reason)}});
    document_.txtCode().ScrollToLine(failed.FaultLine);
}

}  // namespace commands
