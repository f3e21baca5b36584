#include "execution/run_commands.h"

#include "platform/dialogs.h"
#include "platform/event_loop.h"

namespace execution {

namespace {

RunView ViewOn(CommandButtons& buttons, editor::ProgramDocument& document, panels::RegisterPanel& registerPanel,
               panels::MemoryGrid& memoryGrid) {
    const auto show = [&document](const std::string& text, platform::Icon icon) {
        platform::ShowMessage(document.txtCode(), QString::fromStdString(text), platform::ApplicationTitle, icon);
    };
    return {.DisplayRegs = [&registerPanel] { registerPanel.DisplayRegs(); },
            .RefreshRAMDisplay = [&memoryGrid] { memoryGrid.RefreshRAMDisplay(); },
            .GotoLine = [&document](int line) { document.SelectLine(line); },
            .ClearSelection = [&document] { document.ClearSelection(); },
            .Yield = platform::Yield,
            .ShowEndMessage = [show](const std::string& text) { show(text, platform::Icon::Information); },
            .ShowRefusal = [show](const std::string& text) { show(text, platform::Icon::Critical); },
            .ShowCommandState = [&buttons](CommandState state) { buttons.Enable(EnabledIn(state)); }};
}

}  // namespace

RunCommands::RunCommands(m8085::MachineState& machine, const m8085::CodeMap& codeMap, CommandButtons& commandButtons,
                         editor::ProgramDocument& document, panels::RegisterPanel& registerPanel,
                         panels::MemoryGrid& memoryGrid)
    : control(machine, codeMap, ViewOn(commandButtons, document, registerPanel, memoryGrid)) {
    connect(&commandButtons.cmdRun, &QPushButton::clicked, this, [this] { RunProgram(); });
    connect(&commandButtons.cmdSlowRun, &QPushButton::clicked, this, [this] { cmdSlowRun_Click(); });
    connect(&commandButtons.cmdSingleStep, &QPushButton::clicked, this, [this] { StepProgram(); });
    connect(&commandButtons.cmdHalt, &QPushButton::clicked, this, [this] { cmdHalt_Click(); });
    connect(&commandButtons.cmdReset, &QPushButton::clicked, this, [this] { cmdReset_Click(); });
}

}  // namespace execution
