#pragma once

#include <array>

#include "execution/command_state.h"
#include "platform/button.h"

namespace execution {

// The row of buttons above the editor.
struct CommandButtons {
    explicit CommandButtons(QWidget* parent);

    // Enables what can be started. The focus never stays on a button that is disabled nor strays to another control:
    // during a run it goes to Stop, after it to Run.
    void Enable(const EnabledCommands& enabled);

    // From left to right.
    std::array<platform::Button*, 8> All() const {
        return {&cmdCompile, &cmdSingleStep, &cmdRun, &cmdSlowRun, &cmdHalt, &cmdReset, &cmdCodeAssistant, &cmdDelay};
    }

    platform::Button& cmdCompile;
    platform::Button& cmdSingleStep;
    platform::Button& cmdRun;
    platform::Button& cmdSlowRun;
    platform::Button& cmdHalt;
    platform::Button& cmdReset;
    platform::Button& cmdCodeAssistant;
    platform::Button& cmdDelay;
};

}  // namespace execution
