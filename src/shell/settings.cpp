#include "shell/settings.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <memory>

#include "files/file_reader.h"

namespace shell {

namespace {

const QString countKey = QStringLiteral("meminfo/colcount");

QString StartKey(int index) {
    return "meminfo/" + QString::number(index);
}

#if defined(Q_OS_WIN)

// The user's own key of the registry.
std::unique_ptr<QSettings> OpenStore() {
    return std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope, "Velmora", "Velmora");
}

bool CanBeLocked() {
    return true;
}

#else

QString StorePath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/Velmora/Velmora.conf";
}

// Nothing where something stands in its place that is not a file: to read a pipe, say, would be to wait.
std::unique_ptr<QSettings> OpenStore() {
    if (!files::IsFileOrNothing(StorePath().toStdU16String())) return nullptr;
    return std::make_unique<QSettings>(StorePath(), QSettings::IniFormat);
}

// Qt waits half a minute for a lock that somebody left behind. A store is locked for some milliseconds only, so one
// that is older than this many seconds belongs to nobody, and is removed.
bool CanBeLocked() {
    constexpr qint64 longestHold = 2;
    const QFileInfo lock(StorePath() + ".lock");
    const qint64 age = lock.lastModified().secsTo(QDateTime::currentDateTime());
    if (lock.exists() && (age < 0 || age > longestHold)) QFile::remove(lock.filePath());
    return files::IsFileOrNothing(lock.filePath().toStdU16String());
}

#endif

}  // namespace

panels::ColumnList ReadColumns() {
    const std::unique_ptr<QSettings> store = OpenStore();
    if (!store) return {};
    return panels::ColumnList::Restored(
        store->value(countKey, "3").toString().toStdString(), [&store](int index, const std::string& fallback) {
            return store->value(StartKey(index), QString::fromStdString(fallback)).toString().toStdString();
        });
}

// Keys of columns that were removed stay in the store; the count says that they are not to be read.
void SaveColumns(const panels::ColumnList& columns) {
    const std::unique_ptr<QSettings> store = OpenStore();
    if (!store || !CanBeLocked()) return;
    store->setValue(countKey, QString::number(columns.ColCount()));
    for (int index = 0; index < columns.ColCount(); ++index)
        store->setValue(StartKey(index),
                        QString::fromStdString(columns.ColumnStarts()[static_cast<std::size_t>(index)]));
}

}  // namespace shell
