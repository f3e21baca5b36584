#include "commands/assemble_command.h"

#include "assembler/assembler.h"
#include "assembler/source_preparation.h"
#include "platform/dialogs.h"

namespace commands {

void AssembleCommand::cmdCompile_Click() {
    Assemble();
    memoryGrid_.RefreshRAMDisplay();
}

void AssembleCommand::Assemble() {
    if (runControl_.IsRunning() || RefuseExcessLength()) return;
    SplitLabelLines();
    if (RefuseExcessLength()) return;

    const assembler::Assembly assembly =
        assembler::AssembleProgram(assembler::ConvertLineEnds(document_.txtCode().Text()), machine_, codeMap_);
    memoryGrid_.RefreshCurrentCell();
    if (assembly.Succeeded) execution::SetToProgramStart(machine_);
    runControl_.SetAssembled(assembly.Succeeded);
    if (!assembly.Succeeded) {
        runControl_.GotoLine(assembly.AsmErrorLine);
        Report(QString::fromStdU16String(assembly.AsmErrorText));
        return;
    }
    registerPanel_.DisplayRegs();
}

// The labels stay on their own lines in the editor, so that line numbers fit what the user sees.
void AssembleCommand::SplitLabelLines() {
    document_.txtCode().InsertAt(assembler::FindLabelSplits(document_.txtCode().Text()), u"\r\n");
}

// Tells the user of a text that is too long. The run commands are disabled then, and the text stays as it is.
bool AssembleCommand::RefuseExcessLength() {
    const auto explanation = assembler::ExplainExcessLength(static_cast<std::size_t>(document_.txtCode().Length()));
    if (!explanation) return false;
    runControl_.SetAssembled(false);
    Report(QString::fromStdString(*explanation));
    return true;
}

void AssembleCommand::Report(const QString& reason) {
    platform::ShowMessage(document_.txtCode(), reason, QMessageBox::Critical, "Error");
    document_.txtCode().setFocus();
}

}  // namespace commands
