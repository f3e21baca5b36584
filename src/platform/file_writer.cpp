#include "platform/file_writer.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <filesystem>

namespace platform {

namespace {

bool WriteWhole(QFileDevice& file, const QByteArray& bytes) {
    if (!file.open(QIODevice::WriteOnly)) return false;
    // A disk that fills up takes a part at first; it tells the reason when it is given the rest.
    for (qint64 written = 0; written < bytes.size();) {
        const qint64 more = file.write(bytes.constData() + written, bytes.size() - written);
        if (more <= 0) return false;
        written += more;
    }
    return file.flush();
}

}  // namespace

std::optional<QString> WriteFile(const QString& path, const QByteArray& bytes) {
    const QFileInfo existing(path);
    if (existing.exists() && !existing.isFile()) {
        // A device takes what is written to it; a new file must not stand in its place. A pipe might never take it.
        if (std::filesystem::is_fifo(existing.filesystemFilePath())) return "It is a pipe.";
        QFile device(path);
        if (WriteWhole(device, bytes)) return std::nullopt;
        return device.errorString();
    }
    QSaveFile file(path);
    file.setDirectWriteFallback(true);
    if (WriteWhole(file, bytes) && file.commit()) return std::nullopt;
    return file.errorString();
}

}  // namespace platform
