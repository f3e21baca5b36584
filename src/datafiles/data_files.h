#pragma once

#include <QPointer>
#include <functional>

#include "datafiles/frm_save.h"
#include "machine/machine_state.h"
#include "platform/file_dialog.h"

namespace datafiles {

// The commands that move memory contents between the machine and data files.
class DataFiles {
public:
    // The boxes and the save dialog stand before the window that `windowControl` belongs to.
    DataFiles(m8085::MachineState& machineState, platform::FileDialog& fileDialog,
              std::function<void()> refreshRAMDisplay, QWidget& windowControl);

    void mnuLoadData_Click();
    void mnuSaveData_Click();

private:
    m8085::MachineState& machine;
    platform::FileDialog& cDialog;
    std::function<void()> RefreshRAMDisplay;
    QWidget& control;
    QPointer<frmSave> saveDialog;
};

}  // namespace datafiles
