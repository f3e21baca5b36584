#include "platform/file_dialog.h"

#include <QFileInfo>

namespace platform {

std::optional<QString> FileDialog::Show(QWidget& control, QFileDialog::AcceptMode mode) {
    QFileDialog dialog(control.window());
    dialog.setAcceptMode(mode);
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
