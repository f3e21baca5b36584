#include "commands/run_view.h"

#include <QCoreApplication>

#include "commands/verdicts.h"
#include "platform/dialogs.h"

namespace commands {

execution::RunView ViewOn(CommandButtons& buttons, editor::ProgramDocument& document,
                          panels::RegisterPanel& registerPanel, panels::MemoryGrid& memoryGrid) {
    const auto show = [&document](const std::string& text, QMessageBox::Icon icon) {
        platform::ShowMessage(document.txtCode(), QString::fromStdString(text), icon);
    };
    return {
        .DisplayRegs = [&registerPanel] { registerPanel.DisplayRegs(); },
        .RefreshRAMDisplay = [&memoryGrid] { memoryGrid.RefreshRAMDisplay(); },
        .SelectLine = [&document](int line) { document.txtCode().SelectLine(line); },
        .ClearSelection = [&document] { document.txtCode().ClearSelection(); },
        .Yield = [] { QCoreApplication::processEvents(QEventLoop::AllEvents); },
        .ShowEndMessage = [show](const std::string& text) { show(text, QMessageBox::Information); },
        .ShowRefusal = [show](const std::string& text) { show(text, QMessageBox::Critical); },
        .ShowCommandState = [&buttons](execution::CommandState state) { buttons.Enable(state); },
        .MarkChanges =
            [&registerPanel, &memoryGrid](const m8085::Changes& changes) {
                registerPanel.MarkChanges(changes);
                memoryGrid.MarkChanges(changes);
            },
        .MarkNextAddress = [&memoryGrid](std::optional<std::int32_t> address) { memoryGrid.MarkNextAddress(address); },
        .ShowOutcome = [&document](const m8085::MachineState& before,
                                   const m8085::MachineState& after) { ShowVerdicts(document, before, after); },
        .ForgetOutcome = [&document] { document.txtCode().Notes().ShowBesideHints({}); }};
}

}  // namespace commands
