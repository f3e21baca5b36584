#include "platform/file_dialog.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QWidget>

namespace platform {

std::optional<QString> FileDialog::ShowOpen(QWidget& control) {
    return Show(control, Mode::Open);
}

std::optional<QString> FileDialog::ShowSave(QWidget& control) {
    return Show(control, Mode::Save);
}

std::optional<QString> FileDialog::Show(QWidget& control, Mode mode) {
    QFileDialog dialog(control.window());
    dialog.setAcceptMode(mode == Mode::Open ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    if (!directory_.isEmpty()) dialog.setDirectory(directory_);
    if (!lastName_.isEmpty()) dialog.selectFile(lastName_);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;

    const QString path = dialog.selectedFiles().constFirst();
    directory_ = QFileInfo(path).absolutePath();
    lastName_ = QFileInfo(path).fileName();
    return path;
}

}  // namespace platform
