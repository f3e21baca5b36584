#pragma once

#include <QApplication>
#include <functional>
#include <memory>

#include "machine/code_map.h"
#include "machine/machine_state.h"
#include "shell/frm_main.h"
#include "shell/frm_splash.h"

namespace shell {

// Gives the application its names, its icon and its fixed appearance. To be called before any window is made.
void Prepare(QApplication& application);

// The whole program: the one machine, the one code map and the windows.
class Workbench {
public:
    // endProcess is what the exit sequence ends with.
    explicit Workbench(std::function<void()> endProcess);

    // Shows the main window, maximised, with the About box over it, and opens the file that is named, if any.
    void Start(const QString& file = {});

    std::unique_ptr<m8085::MachineState> Machine = std::make_unique<m8085::MachineState>();
    std::unique_ptr<m8085::CodeMap> CodeMap = std::make_unique<m8085::CodeMap>();
    frmSplash Splash;
    frmMain Window;
};

}  // namespace shell
