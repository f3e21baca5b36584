#pragma once

#include <QFileDialog>
#include <optional>

namespace platform {

// An Open and Save dialog that remembers the directory and the name last chosen. No filter and no default extension: a
// name is used exactly as the user gave it. Showing it returns the full path, or nothing when it is cancelled.
class FileDialog {
public:
    // Offers a folder at the side of every dialog, if it is there. So are those offered in which a file was chosen.
    static void AddPlace(const QString& folder);

    void SetInitialDirectory(const QString& path) { directory_ = path; }

    // The name need not be that of an existing file.
    std::optional<QString> ShowOpen(QWidget& control) { return Show(control, QFileDialog::AcceptOpen); }

    // Asks before it gives the name of an existing file.
    std::optional<QString> ShowSave(QWidget& control) { return Show(control, QFileDialog::AcceptSave); }

private:
    std::optional<QString> Show(QWidget& control, QFileDialog::AcceptMode mode);

    QString directory_;
    QString lastName_;
};

}  // namespace platform
