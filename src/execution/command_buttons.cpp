#include "execution/command_buttons.h"

namespace execution {

namespace {

platform::Button& MakeButton(const char* name, const char* caption, QWidget* parent) {
    return *new platform::Button(name, caption, parent);
}

}  // namespace

CommandButtons::CommandButtons(QWidget* parent)
    : cmdCompile(MakeButton("cmdCompile", "&Assemble", parent)),
      cmdSingleStep(MakeButton("cmdSingleStep", "&Single Step", parent)),
      cmdRun(MakeButton("cmdRun", "&Run", parent)),
      cmdSlowRun(MakeButton("cmdSlowRun", "S&low Run", parent)),
      cmdHalt(MakeButton("cmdHalt", "S&top", parent)),
      cmdReset(MakeButton("cmdReset", "R&eset", parent)),
      cmdCodeAssistant(MakeButton("cmdCodeAssistant", "Start &Code Assistant", parent)),
      cmdDelay(MakeButton("cmdDelay", "&Delay Designer", parent)) {
    Enable(EnabledIn(CommandState::NoProgram));
}

// The toolkit would hand the focus of a disabled button to the next control in the tab order, which may be a text box
// that then writes an old value back.
void CommandButtons::Enable(const EnabledCommands& enabled) {
    const std::array<bool, 8> on = {enabled.Compile, enabled.SingleStep, enabled.Run,           enabled.SlowRun,
                                    enabled.Halt,    enabled.Reset,      enabled.CodeAssistant, enabled.Delay};
    const auto buttons = All();
    // The window need not be active: a message box over it may just have closed.
    const QWidget* focused = cmdRun.window()->focusWidget();
    bool focusIsLost = false;
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        if (on[i]) buttons[i]->setEnabled(true);
        focusIsLost = focusIsLost || (!on[i] && buttons[i] == focused);
    }
    if (focusIsLost) (enabled.Halt ? cmdHalt : enabled.Run ? cmdRun : cmdCompile).setFocus();
    for (std::size_t i = 0; i < buttons.size(); ++i)
        if (!on[i]) buttons[i]->setEnabled(false);
}

}  // namespace execution
