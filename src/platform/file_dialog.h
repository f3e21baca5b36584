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

    // Else that in which the program was started.
    void SetInitialDirectory(const QString& path) { directory_ = path; }

    // The name need not be that of an existing file.
    std::optional<QString> ShowOpen(QWidget& control) { return Show(control, QFileDialog::AcceptOpen, lastName_); }

    // Asks before it gives the name of an existing file.
    std::optional<QString> ShowSave(QWidget& control) { return ShowSave(control, lastName_); }

    // The same with another name proposed, or none where it is empty.
    std::optional<QString> ShowSave(QWidget& control, const QString& name) {
        return Show(control, QFileDialog::AcceptSave, name);
    }

private:
    std::optional<QString> Show(QWidget& control, QFileDialog::AcceptMode mode, const QString& name);

    QString directory_;
    QString lastName_;
};

}  // namespace platform
