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
    if (runControl_.IsRunning()) return;
    const auto splits = assembler::FindLabelSplits(document_.txtCode().Text());
    if (RefuseExcessLength(splits.size())) return;
    // The labels stay on their own lines in the editor, so that line numbers fit what the user sees.
    document_.txtCode().InsertAt(splits, u"\r\n");

    const assembler::Assembly assembly =
        assembler::AssembleProgram(assembler::ConvertLineEnds(document_.txtCode().Text()), machine_, codeMap_);
    memoryGrid_.RefreshCurrentCell();
    if (assembly.Succeeded) m8085::SetToProgramStart(machine_);
    const auto instructions = assembly.Succeeded ? assembly.Instructions : std::vector<std::int32_t>();
    runControl_.SetAssembled(assembly.Succeeded, instructions);
    if (assembly.Succeeded) document_.txtCode().KeepLineNumbers();
    memoryGrid_.NameInstructionsAt(instructions);
    if (!assembly.Succeeded) {
        runControl_.GotoLine(assembly.AsmErrorLine);
        Report(QString::fromStdU16String(assembly.AsmErrorText));
        return;
    }
    registerPanel_.DisplayRegs();
}

// Reports a text that is too long. The run commands are disabled then, and the text stays as it is.
bool AssembleCommand::RefuseExcessLength(std::size_t labelSplits) {
    const auto length = static_cast<std::size_t>(document_.txtCode().Length());
    const auto explanation = assembler::ExplainExcessLength(length, labelSplits);
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
