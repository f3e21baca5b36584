#include "commands/data_file_commands.h"

#include <QFileInfo>
#include <fstream>

#include "datafiles/data_file.h"
#include "files/file_reader.h"
#include "platform/clipboard.h"
#include "platform/dialogs.h"

namespace commands {

bool LoadDataFile(const QString& path, m8085::MemoryBytes& memory) {
    const std::filesystem::path name = QFileInfo(path).filesystemFilePath();
    std::ifstream file;
    if (files::IsFileOrNothing(name)) file.open(name, std::ios::binary);
    return file.is_open() && memedata::LoadDataFile(file, memory);
}

void DataFileCommands::mnuLoadData_Click() {
    const std::optional<QString> path = cDialog_.ShowOpen(memoryGrid_);
    if (!path) return;
    const QFileInfo info(*path);
    if (!info.exists()) {
        platform::ShowMessage(memoryGrid_, "The file " + path->toLower() + " does not exist. Please verify the path.",
                              QMessageBox::NoIcon);
        return;
    }
    const bool isLoaded = LoadDataFile(*path, machine_.Memory);
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

void DataFileCommands::mnuCopyByte_Click() {
    const auto [isPort, number] = memoryGrid_.CurrentPlace();
    const auto address = static_cast<std::uint16_t>(number);
    Copy(isPort ? memedata::ComposePortLine(m8085::Low(number), machine_.Ports[address])
                : memedata::ComposeLines({address, address}, machine_.Memory));
}

void DataFileCommands::mnuCopyRows_Click() {
    constexpr auto title = "Copy Rows";
    const QString answer =
        platform::AskText(memoryGrid_, "Enter the addresses of the first and the last row, such as 8000-800F", title);
    if (answer.isEmpty()) return;
    if (const auto range = memedata::ReadRange(answer.toStdU16String()))
        Copy(memedata::ComposeLines(*range, machine_.Memory));
    else
        platform::ShowMessage(memoryGrid_, "Enter two addresses (0000 - FFFF) with a - between them, or one.",
                              QMessageBox::Information, title);
}

void DataFileCommands::Copy(const std::string& lines) {
    platform::PutRichText(QString::fromStdString(lines).toStdU16String());
}

void DataFileCommands::mnuSaveData_Click() {
    if (saveDialog_ == nullptr) saveDialog_ = new datafiles::frmSave(machine_.Memory, *memoryGrid_.window());
    saveDialog_->Open();
}

}  // namespace commands
