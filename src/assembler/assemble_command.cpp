#include "assembler/assemble_command.h"

#include "assembler/assembler.h"
#include "assembler/source_preparation.h"
#include "execution/run_control.h"
#include "platform/dialogs.h"

namespace assembler {

AssembleCommand::AssembleCommand(m8085::MachineState& machineState, m8085::CodeMap& sourceLines,
                                 platform::Button& cmdCompile, editor::ProgramDocument& programDocument,
                                 execution::RunCommands& run, panels::RegisterPanel& registers,
                                 panels::MemoryGrid& grid)
    : machine(machineState),
      codeMap(sourceLines),
      document(programDocument),
      runCommands(run),
      registerPanel(registers),
      memoryGrid(grid) {
    connect(&cmdCompile, &QPushButton::clicked, this, [this] { cmdCompile_Click(); });
}

void AssembleCommand::cmdCompile_Click() {
    Assemble();
    memoryGrid.RefreshRAMDisplay();
}

void AssembleCommand::Assemble() {
    if (runCommands.IsRunning()) return;
    const auto splits = FindLabelSplits(document.txtCode().Text());
    if (RefuseExcessLength(splits.size())) return;
    // The labels stay on their own lines in the editor, so that line numbers fit what the user sees.
    document.txtCode().InsertAt(splits, u"\r\n");

    const Assembly assembly = AssembleProgram(ConvertLineEnds(document.txtCode().Text()), machine, codeMap);
    memoryGrid.RefreshCurrentCell();
    runCommands.SetAssembled(assembly.Succeeded);
    if (!assembly.Succeeded) {
        runCommands.GotoLine(assembly.AsmErrorLine);
        Report(QString::fromStdU16String(assembly.AsmErrorText));
        return;
    }
    execution::SetToProgramStart(machine);
    registerPanel.DisplayRegs();
}

// Tells the user of a text that is too long. The run commands are disabled then, and the text stays as it is.
bool AssembleCommand::RefuseExcessLength(std::size_t labelSplits) {
    const auto length = static_cast<std::size_t>(document.txtCode().Length());
    const auto explanation = ExplainExcessLength(length, labelSplits);
    if (!explanation) return false;
    runCommands.SetAssembled(false);
    Report(QString::fromStdString(*explanation));
    return true;
}

void AssembleCommand::Report(const QString& reason) {
    platform::ShowMessage(document.txtCode(), reason, "Error", platform::Icon::Critical);
    document.txtCode().setFocus();
}

}  // namespace assembler
