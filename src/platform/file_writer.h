#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace platform {

// Makes the bytes the whole content of the file, in the place of one of that name. The file of that name stays as it
// was until the new content is complete; only in a directory that takes no new file is it written over. Gives nothing
// on success, and otherwise the system's reason.
std::optional<QString> WriteFile(const QString& path, const QByteArray& bytes);

}  // namespace platform
