#include "commands/convert_command.h"

#include <QFileInfo>

#include "conversion/summary.h"
#include "files/file_writer.h"
#include "platform/dialogs.h"

namespace commands {

void ConvertCommand::Convert() {
    platform::ProgramText& txtCode = document_.txtCode();
    const conversion::Conversion conversion = conversion::ConvertProgram(txtCode.Text());
    if (!txtCode.ReplaceLines(conversion.Program)) return;
    constexpr std::size_t mostNotes = 20;
    const auto text = QString::fromStdU16String(conversion::Summarize(conversion, mostNotes));
    const auto all = QString::fromStdU16String(conversion::Summarize(conversion, conversion.Notes.size()));
    platform::ShowMessage(txtCode, text, QMessageBox::Information, "Convert from Elsewhere",
                          text == all ? QString() : all);
    if (!conversion.Data.empty()) SaveData(conversion.Data);
    txtCode.setFocus();
}

void ConvertCommand::SaveData(const std::string& data) {
    const auto path = document_.cDialog().ShowSave(document_.txtCode(), {});
    if (!path) return;
    if (const auto reason = files::WriteFile(QFileInfo(*path).filesystemFilePath(), data))
        platform::ShowMessage(document_.txtCode(),
                              "The data file could not be written: " + QString::fromStdString(*reason),
                              QMessageBox::Critical, "Error!");
}

}  // namespace commands
