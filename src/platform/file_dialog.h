#pragma once

#include <QString>
#include <optional>

class QWidget;

namespace platform {

// An Open and Save dialog that remembers the directory and the name last chosen. No filter and no default extension: a
// name is used exactly as the user gave it. Showing it returns the full path, or nothing when it is cancelled.
class FileDialog {
public:
    void SetInitialDirectory(const QString& path) { directory_ = path; }

    // The name need not be that of an existing file.
    std::optional<QString> ShowOpen(QWidget& control);

    // Asks before it gives the name of an existing file.
    std::optional<QString> ShowSave(QWidget& control);

private:
    enum class Mode { Open, Save };
    std::optional<QString> Show(QWidget& control, Mode mode);

    QString directory_;
    QString lastName_;
};

}  // namespace platform
