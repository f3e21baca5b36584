#include "execution/command_buttons.h"

#include <array>
#include <utility>

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
    const std::array<std::pair<platform::Button*, bool>, 8> states = {{{&cmdCompile, enabled.Compile},
                                                                       {&cmdSingleStep, enabled.SingleStep},
                                                                       {&cmdRun, enabled.Run},
                                                                       {&cmdSlowRun, enabled.SlowRun},
                                                                       {&cmdHalt, enabled.Halt},
                                                                       {&cmdReset, enabled.Reset},
                                                                       {&cmdCodeAssistant, enabled.CodeAssistant},
                                                                       {&cmdDelay, enabled.Delay}}};
    // The window need not be active: a message box over it may just have closed.
    const QWidget* focused = cmdRun.window()->focusWidget();
    bool focusIsLost = false;
    for (const auto& [button, on] : states) {
        if (on) button->setEnabled(true);
        focusIsLost = focusIsLost || (!on && button == focused);
    }
    if (focusIsLost) (enabled.Halt ? cmdHalt : enabled.Run ? cmdRun : cmdCompile).setFocus();
    for (const auto& [button, on] : states)
        if (!on) button->setEnabled(false);
}

}  // namespace execution
