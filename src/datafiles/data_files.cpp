#include "datafiles/data_files.h"

#include <QFileInfo>
#include <fstream>

#include "datafiles/data_file.h"
#include "platform/dialogs.h"

namespace datafiles {

DataFiles::DataFiles(m8085::MachineState& machineState, platform::FileDialog& fileDialog,
                     std::function<void()> refreshRAMDisplay, QWidget& windowControl)
    : machine(machineState),
      cDialog(fileDialog),
      RefreshRAMDisplay(std::move(refreshRAMDisplay)),
      control(windowControl) {}

void DataFiles::mnuLoadData_Click() {
    const std::optional<QString> path = cDialog.ShowOpen(control);
    if (!path) return;
    const QFileInfo info(*path);
    if (!info.exists()) {
        platform::ShowMessage(control, "The file " + path->toLower() + " does not exist. Please verify the path.",
                              platform::ApplicationTitle, platform::Icon::None);
        return;
    }
    // Reading a device or a pipe might never end.
    std::ifstream file;
    if (info.isFile()) file.open(info.filesystemFilePath(), std::ios::binary);
    if (file.is_open() && memedata::LoadDataFile(file, machine.Memory)) {
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
    saveDialog->showNormal();
    saveDialog->raise();
    saveDialog->activateWindow();
}

}  // namespace datafiles
