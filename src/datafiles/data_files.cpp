#include "datafiles/data_files.h"

#include <QFileInfo>
#include <fstream>

#include "datafiles/data_file.h"
#include "platform/dialogs.h"

namespace datafiles {

DataFiles::DataFiles(m8085::MachineState& machineState, platform::FileDialog& fileDialog,
                     std::function<void()> refreshRAMDisplay, QWidget& anyControl)
    : machine(machineState),
      cDialog(fileDialog),
      RefreshRAMDisplay(std::move(refreshRAMDisplay)),
      control(anyControl) {}

void DataFiles::mnuLoadData_Click() {
    const std::optional<QString> path = cDialog.ShowOpen(control);
    if (!path) return;
    const QFileInfo info(*path);
    if (!info.exists()) {
        platform::ShowMessage(control, "The file " + path->toLower() + " does not exist. Please verify the path.",
                              platform::ApplicationTitle, platform::Icon::None);
        return;
    }
    std::ifstream file(info.filesystemFilePath(), std::ios::binary);
    if (memedata::LoadDataFile(file, machine.Memory)) {
        RefreshRAMDisplay();
    } else {
        platform::ShowMessage(
            control, "There was some problem with opening the data file. It is probably not in the right format.",
            "Error!", platform::Icon::None);
    }
}

void DataFiles::mnuSaveData_Click() {
    // A dialog that has been closed may be there for a moment yet.
    if (saveDialog == nullptr || !saveDialog->isVisible()) saveDialog = new frmSave(machine.Memory, *control.window());
    saveDialog->show();
    saveDialog->raise();
    saveDialog->activateWindow();
}

}  // namespace datafiles
