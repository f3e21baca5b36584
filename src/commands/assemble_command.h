#pragma once

#include <optional>

#include "assembler/assembler.h"
#include "editor/program_document.h"
#include "execution/run_control.h"
#include "machine/code_map.h"
#include "machine/machine_state.h"
#include "panels/memory_grid.h"
#include "panels/register_panel.h"

namespace commands {

// From the text in the editor to a program that can run. A success is silent: the run commands become enabled.
class AssembleCommand {
public:
    AssembleCommand(m8085::MachineState& machine, m8085::CodeMap& codeMap, editor::ProgramDocument& document,
                    execution::RunControl& runControl, panels::RegisterPanel& registerPanel,
                    panels::MemoryGrid& memoryGrid)
        : machine_(machine),
          codeMap_(codeMap),
          document_(document),
          runControl_(runControl),
          registerPanel_(registerPanel),
          memoryGrid_(memoryGrid) {}

    // The button's command, which shows the new memory in the grid.
    void cmdCompile_Click();

    // The menu's command, which leaves the grid as it is. Does nothing during a run.
    void Assemble();

    // The latest assembly, if it succeeded and has not been forgotten: because the text is no longer what was
    // assembled, or the program is no longer in memory.
    const assembler::Assembly* Assembled() const { return assembled_ ? &*assembled_ : nullptr; }
    void Forget();

    // Puts the listing of the latest assembly on the clipboard, as velmora-run prints it, whatever has become of text
    // and memory since. There is none where that assembly failed.
    void mnuCopyListing_Click();
    bool HasListing() const { return !listedText_.empty(); }

private:
    void Report(const QString& message);
    void ShowWarnings(const std::u16string& text);
    void ShowReason(const std::u16string& text, const assembler::Assembly& failed);

    m8085::MachineState& machine_;
    m8085::CodeMap& codeMap_;
    editor::ProgramDocument& document_;
    execution::RunControl& runControl_;
    panels::RegisterPanel& registerPanel_;
    panels::MemoryGrid& memoryGrid_;
    std::optional<assembler::Assembly> assembled_;
    std::u16string listedText_;  // the text of the latest assembly; empty where that failed
};

}  // namespace commands
