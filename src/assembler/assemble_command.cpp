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
    if (runCommands.IsRunning() || IsTooLong()) return;
    SplitLabelLines();
    if (IsTooLong()) return;

    const Assembly assembly = AssembleProgram(ConvertLineEnds(document.txtCode().Text()), machine, codeMap);
    runCommands.SetAssembled(assembly.Succeeded);
    if (!assembly.Succeeded) {
        document.GotoLine(assembly.AsmErrorLine);
        Report(QString::fromStdU16String(assembly.AsmErrorText));
        return;
    }
    execution::SetToProgramStart(machine);
    registerPanel.DisplayRegs();
}

// The labels stay on their own lines in the editor, so that line numbers fit what the user sees. Each insertion is a
// change of the text like any other.
void AssembleCommand::SplitLabelLines() {
    constexpr std::u16string_view lineEnd = u"\r\n";
    int inserted = 0;
    for (const std::size_t place : FindLabelSplits(document.txtCode().Text())) {
        document.txtCode().SetSelectionStart(static_cast<int>(place) + inserted);
        document.txtCode().ReplaceSelection(lineEnd);
        inserted += static_cast<int>(lineEnd.size());
    }
}

// Tells the user, and leaves the run commands disabled, if the text is more than the assembler takes.
bool AssembleCommand::IsTooLong() {
    constexpr int longest = static_cast<int>(LongestPreparedText) - 1;
    const int length = document.txtCode().Length();
    if (length <= longest) return false;
    runCommands.SetAssembled(false);
    Report(QString("The program is too long to assemble: it has %1 characters, and at most %2 can be assembled. "
                   "A line end counts as two.")
               .arg(length)
               .arg(longest));
    return true;
}

void AssembleCommand::Report(const QString& reason) {
    platform::ShowMessage(document.txtCode(), reason, "Error", platform::Icon::Critical);
    document.txtCode().setFocus();
}

}  // namespace assembler
