#include "commands/data_file_commands.h"

#include <QFileInfo>
#include <fstream>

#include "datafiles/data_file.h"
#include "files/file_reader.h"
#include "platform/dialogs.h"

namespace commands {

void DataFileCommands::mnuLoadData_Click() {
    const std::optional<QString> path = cDialog_.ShowOpen(memoryGrid_);
    if (!path) return;
    const QFileInfo info(*path);
    if (!info.exists()) {
        platform::ShowMessage(memoryGrid_, "The file " + path->toLower() + " does not exist. Please verify the path.",
                              QMessageBox::NoIcon);
        return;
    }
    std::ifstream file;
    if (files::IsFileOrNothing(info.filesystemFilePath())) file.open(info.filesystemFilePath(), std::ios::binary);
    const bool isLoaded = file.is_open() && memedata::LoadDataFile(file, machine_.Memory);
    runControl_.NoteOtherChange();
    if (isLoaded) {
        memoryGrid_.RefreshRAMDisplay();
    } else {
        memoryGrid_.RefreshCurrentCell();
        platform::ShowMessage(
            memoryGrid_, "There was some problem with opening the data file. It is probably not in the right format.",
            QMessageBox::NoIcon, "Error!");
    }
}

void DataFileCommands::mnuSaveData_Click() {
    if (saveDialog_ == nullptr) saveDialog_ = new datafiles::frmSave(machine_.Memory, *memoryGrid_.window());
    saveDialog_->Open();
}

}  // namespace commands
